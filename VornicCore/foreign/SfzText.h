#pragma once

#include "VornicCore/foreign/PackFolder.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vornic {

/// The opcodes of one <region>, with what it inherits from its group, master and global.
using SfzOpcodes = std::map<std::string, std::string, std::less<>>;

/// What an SFZ file says.
struct SfzText {
    SfzOpcodes control;
    std::vector<SfzOpcodes> regions;
};

/// Reads an SFZ file of `folder` with what it includes. Throws ForeignPackError for one beyond all
/// reason. Thread: any.
SfzText readSfzText(const PackFolder& folder, const std::string& name, PackNotes& notes);

} // namespace vornic
