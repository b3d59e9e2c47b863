#pragma once

#include "Vornic/linux/permission/KeyGrant.h"
#include "Vornic/ports/PermissionRequest.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// Asks for access to the keyboards through polkit, which has its own page for the password. A
/// request that was declined may be made again. Thread: main.
class InputMonitoringRequest final : public PermissionRequest {
  public:
    /// What running a program came to: its exit status, -1 where it could not be started, and what
    /// it complained about.
    using Ended = std::function<void(int status, const std::string& complaint)>;
    /// Starts a program, returns at once, and calls back on the main thread when it has ended.
    using Runner = std::function<void(const std::vector<std::string>& command, Ended ended)>;

    /// What is looked for; others in tests.
    struct Places {
        std::filesystem::path readerSocket = InputMonitoringFiles::readerSocket;
        std::filesystem::path readerAgreement = InputMonitoringFiles::readerAgreement;
        std::filesystem::path agreement = InputMonitoringFiles::agreement;
    };

    /// `helper` is the privileged step's program; nothing can be asked where it is not installed,
    /// or where anybody but `owner` could put another one in its place.
    InputMonitoringRequest(std::filesystem::path helper, Runner run, Places places,
                           unsigned owner = 0);

    /// Whether something in this session asks for passwords, absent where that cannot be known;
    /// asked where polkit has said no.
    std::function<std::optional<bool>()> hasPasswordAgent = [] { return std::nullopt; };

    /// Where the helper of the program at `executable` is installed; whether it is there is another
    /// question.
    static std::filesystem::path helperOf(const std::filesystem::path& executable);

    std::vector<Point> explanation() const override;
    bool possible() const override;
    bool granted() const override;
    void request(Done done) override { ask("enable", std::move(done)); }
    void revoke(Done done) override { ask("disable", std::move(done)); }

  private:
    void ask(const std::string& word, Done done);
    void answer(int status, const std::string& complaint);
    bool hasReader() const;
    std::vector<Point> explanationOfReader() const;
    std::vector<Point> explanationOfRule() const;

    std::filesystem::path helper_;
    Runner run_;
    Places places_;
    unsigned owner_;
    /// "enable" or "disable" while a request is open, and those who wait for its answer.
    std::string open_;
    std::vector<Done> waiting_;
};

} // namespace vornic
