#pragma once

#include <QString>

namespace vornic {

/// What a part does to the sound, in a few words; `part` and `value` by their names in files.
/// Nothing where there is nothing to say.
QString partNote(const QString& part, const QString& value);

} // namespace vornic
