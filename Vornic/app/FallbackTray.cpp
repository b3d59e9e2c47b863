#include "Vornic/app/FallbackTray.h"

#include <utility>

namespace vornic {

FallbackTray::FallbackTray(TrayIcon& first, TrayIcon& second, std::function<void(bool)> wantSecond)
    : first_(first), second_(second), wantSecond_(std::move(wantSecond)) {
    for (TrayIcon* const tray : {&first_, &second_}) {
        tray->onActivate = [this](int x, int y) { onActivate(x, y); };
        tray->onScroll = [this](double notches) { onScroll(notches); };
    }
    first_.onVisibleChange = [this] {
        wantSecond_(secondWanted());
        onVisibleChange();
    };
    second_.onVisibleChange = [this] { onVisibleChange(); };
    wantSecond_(secondWanted());
}

void FallbackTray::show(const Picture& picture, const std::string& line) {
    first_.show(picture, line);
    second_.show(picture, line);
}

} // namespace vornic
