#include "Vornic/reader/Admission.h"

#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A process as the system would tell of it.
struct AdmissionTest : ::testing::Test {
    AdmissionTest() {
        makeProgram(installed());
        fs::create_directories(about() / "ns");
        fs::create_symlink(installed(), about() / "exe");
        fs::create_symlink("/proc/self/ns/user", about() / "ns/user");
        mapped({line("r-xp", installed()), line("rw-p", "/somewhere/data"), line("r-xp", "[vdso]"),
                line("r-xp", "/memfd:JITCode:QtQml (deleted)"), line("rwxp", "")});
    }

    fs::path installed() const { return scratch / "vornic"; }
    fs::path about() const { return scratch / "1234"; }
    static void makeProgram(const fs::path& path) {
        std::ofstream(path) << "code";
        fs::permissions(path, fs::perms(0755));
    }
    static std::string line(const std::string& rights, const fs::path& path) {
        return "7f01-7f02 " + rights + " 00001000 08:01 42                 " + path.string();
    }
    void mapped(const std::vector<std::string>& lines) const {
        std::ofstream maps(about() / "maps");
        for (const std::string& one : lines) {
            maps << one << "\n";
        }
    }
    std::string refusal() const { return whyRefused(about(), installed(), ::getuid()); }

    ScratchFolder scratch;
};

TEST_F(AdmissionTest, theInstalledProgramIsLetIn) {
    EXPECT_EQ(refusal(), "");
}

TEST_F(AdmissionTest, anotherProgramIsNotEvenWithTheSameContents) {
    makeProgram(scratch / "copy");
    fs::remove(about() / "exe");
    fs::create_symlink(scratch / "copy", about() / "exe");
    EXPECT_THAT(refusal(), HasSubstr("another program"));
}

TEST_F(AdmissionTest, aProcessThatIsGoneOrCannotBeSeenIsNot) {
    fs::remove(about() / "maps");
    EXPECT_THAT(refusal(), HasSubstr("cannot be looked at"));
    fs::remove_all(about());
    EXPECT_NE(refusal(), "");
    fs::remove(installed());
    EXPECT_NE(refusal(), "") << "two files that are not there are not the same";
}

TEST_F(AdmissionTest, aProgramThatOthersCouldChangeIsNot) {
    for (const fs::perms who : {fs::perms::group_write, fs::perms::others_write}) {
        fs::permissions(installed(), who, fs::perm_options::add);
        EXPECT_THAT(refusal(), HasSubstr("not only root"));
        fs::permissions(installed(), who, fs::perm_options::remove);
    }
    // Root's files are nobody else's; so the owner counts only where another one has the file.
    if (::getuid() == 0) {
        ASSERT_EQ(::chown(installed().c_str(), 65534, 65534), 0);
        EXPECT_THAT(refusal(), HasSubstr("not only root"));
    } else {
        EXPECT_THAT(whyRefused(about(), installed(), 0), HasSubstr("not only root"));
    }
}

TEST_F(AdmissionTest, aProgramAmongOtherUsersIsNot) {
    fs::remove(about() / "ns/user");
    fs::create_symlink("/proc/self/ns/mnt", about() / "ns/user");
    EXPECT_THAT(refusal(), HasSubstr("namespace of its own"));
}

TEST_F(AdmissionTest, codeFromOutsideTheSystemIsNot) {
    makeProgram(scratch / "evil.so");
    for (const std::string& path :
         {(scratch / "evil.so").string(), std::string("/usr/lib/gone.so (deleted)"),
          std::string("/memfd:evil (deleted)"), std::string("/usr/../tmp/gone.so"),
          std::string("[heap]")}) {
        mapped({line("r-xp", installed()), line("r-xp", path)});
        EXPECT_EQ(refusal(), "foreign code in it, " + path);
    }
    // Data may come from anywhere.
    mapped({line("r-xp", installed()), line("r--p", scratch / "evil.so")});
    EXPECT_EQ(refusal(), "");
}

std::vector<ReaderStanding> standings(const std::vector<ReaderClient>& clients) {
    return standingsOf(clients);
}

TEST(ReaderStandings, oneHearsTheOthersWait) {
    using enum ReaderStanding;
    const ReaderClient here{.seat = "seat0", .allowed = true};
    const ReaderClient away{.seat = "", .allowed = true};
    const ReaderClient barred{.seat = "seat0", .allowed = false};
    EXPECT_THAT(standings({}), ElementsAre());
    EXPECT_THAT(standings({here}), ElementsAre(hearing));
    EXPECT_THAT(standings({here, here}), ElementsAre(hearing, taken));
    EXPECT_THAT(standings({away, here, away}), ElementsAre(paused, hearing, paused));
    EXPECT_THAT(standings({barred, here}), ElementsAre(notAllowed, hearing));
    EXPECT_THAT(standings({away, barred}), ElementsAre(paused, notAllowed));
}

} // namespace
} // namespace vornic
