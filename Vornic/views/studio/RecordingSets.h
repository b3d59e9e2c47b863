#pragma once

#include "Vornic/library/SampleInfo.h"
#include "VornicCore/packs/SoundPack.h"

#include <QVariantList>
#include <vector>

namespace vornic {

/// Every recording that a layer can play, in sets that go together: the user's own first, then each
/// pack's kinds of stroke, then what was derived from the packs. A list of { text, ids, names },
/// both of equal length; sets without a recording are left out.
/// Thread: any.
QVariantList recordingSets(const std::vector<SoundPack>& packs,
                           const std::vector<SampleInfo>& others);

} // namespace vornic
