#pragma once

#include <QQuickView>
#include <string>
#include <vector>

namespace vornic {

/// What a user would complain of in a window as it is drawn now, in words: texts that are cut off
/// or elided, controls that are covered, too small, or beyond where one can scroll.
std::vector<std::string> complaintsAbout(QQuickView& window);

} // namespace vornic
