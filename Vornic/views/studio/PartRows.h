#pragma once

#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/StabParts.h"
#include "VornicCore/parts/SwitchParts.h"

#include <QVariantList>
#include <span>

namespace vornic {

/// One part of a record, as the user chooses it: its name, what there is to choose from with a note
/// on what each does to the sound, and where the choice is kept. Thread: main, as everything here.
template <typename Record>
struct PartRow {
    const char* name; // in the translations' context "PartsAdapter"
    /// Entries { value, text, note }.
    const QVariantList& (*options)();
    int (*now)(const Record&);
    /// What names none of the options changes nothing.
    void (*choose)(Record&, int);
};

/// Every part there is to choose, in the order of the rows. A kind that is new is an entry here.
std::span<const PartRow<SwitchParts>> switchRows();
std::span<const PartRow<BuildParts>> buildRows();
std::span<const PartRow<StabParts>> stabRows();

/// Of foams any number is chosen.
const QVariantList& foamOptions();

} // namespace vornic
