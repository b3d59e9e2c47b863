// The privileged step of "Turn on Input Monitoring…", started through polkit after the user has
// agreed: vornic-input-monitoring enable|disable. It takes nothing else from whoever starts it.

#include "Vornic/linux/permission/InputMonitoringSwitch.h"
#include "Vornic/linux/permission/LinuxSystemChanges.h"
#include "VornicCore/base/EndInOrder.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

int main(int argc, char** argv) {
    vornic::endInOrder("vornic-input-monitoring");
    const std::string_view word = argc == 2 ? argv[1] : "";
    if (word != "enable" && word != "disable") {
        std::fputs("usage: vornic-input-monitoring enable|disable\n", stderr);
        return 2;
    }
    // The caller's would come along: the folder is to be writable by none but root, and readable.
    ::umask(S_IWGRP | S_IWOTH);
    vornic::LinuxSystemChanges changes;
    vornic::InputMonitoringSwitch monitoring(changes);
    const std::string problem = word == "enable" ? monitoring.enable() : monitoring.disable();
    if (!problem.empty()) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
