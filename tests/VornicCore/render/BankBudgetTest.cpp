#include "VornicCore/render/BankBudget.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

JobSize job(std::size_t variations, std::size_t frames, bool played) {
    return {.frames = std::vector<std::size_t>(variations, frames), .played = played};
}

TEST(BankBudget, givesAllWhereThereIsRoom) {
    const std::vector<JobSize> jobs = {job(12, 100, true), job(4, 50, false)};
    EXPECT_THAT(sharedOut(jobs, 1400), ElementsAre(12, 4));
    EXPECT_THAT(sharedOut(jobs, 1399), ElementsAre(12, 3));
}

TEST(BankBudget, takesFromSoundsThatNoKeyPlaysFirstAndFromAllOfThemAlike) {
    const std::vector<JobSize> jobs = {job(12, 100, true), job(12, 100, false), job(5, 100, false),
                                       job(2, 100, false)};
    EXPECT_THAT(sharedOut(jobs, 1200 + 1200), ElementsAre(12, 5, 5, 2));
    EXPECT_THAT(sharedOut(jobs, 1200 + 300), ElementsAre(12, 1, 1, 1));
    EXPECT_THAT(sharedOut(jobs, 1200 + 299), ElementsAre(11, 1, 1, 1));
}

TEST(BankBudget, givesEachAtLeastOneWhetherThereIsRoomOrNot) {
    const std::vector<JobSize> jobs = {job(12, 100, true), job(12, 100, false), job(0, 0, true)};
    EXPECT_THAT(sharedOut(jobs, 0), ElementsAre(1, 1, 0));
    EXPECT_THAT(sharedOut({}, 0), IsEmpty());
}

TEST(BankBudget, countsEveryVariationByItsOwnLength) {
    const std::vector<JobSize> jobs = {{.frames = {10, 1000, 10}, .played = true}};
    EXPECT_THAT(sharedOut(jobs, 1020), ElementsAre(3));
    EXPECT_THAT(sharedOut(jobs, 1019), ElementsAre(2));
    EXPECT_THAT(sharedOut(jobs, 1009), ElementsAre(1));
}

} // namespace
} // namespace vornic
