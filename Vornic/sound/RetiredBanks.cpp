#include "Vornic/sound/RetiredBanks.h"

#include "VornicCore/base/FreeMemory.h"
#include "VornicCore/sampler/SamplerCore.h"

#include <algorithm>
#include <utility>

namespace vornic {

namespace {

/// Whether the caller's is the only reference left, with everything that the other holders did
/// before they let go made visible to this thread.
bool heldAlone(const std::shared_ptr<const VoiceBank>& bank) {
    if (bank.use_count() != 1) {
        return false;
    }
    // The count is read relaxed. Locking a weak reference changes the count, and so comes after the
    // last holder's release.
    return std::weak_ptr<const VoiceBank>(bank).lock() != nullptr;
}

} // namespace

void RetiredBanks::add(std::shared_ptr<const VoiceBank> bank, double now) {
    banks_.push_back({.bank = std::move(bank), .since = now, .lastEvent = std::nullopt});
}

void RetiredBanks::takeBack(const std::shared_ptr<const VoiceBank>& bank) {
    std::erase_if(banks_, [&](const Retired& retired) { return retired.bank == bank; });
}

void RetiredBanks::release(double now, const SamplerCore& core) {
    const std::size_t freed = std::erase_if(banks_, [&](Retired& retired) {
        if (!retired.lastEvent && heldAlone(retired.bank)) {
            retired.lastEvent = core.pushedEvents();
        }
        return now - retired.since > shortestStay && retired.lastEvent &&
               core.settledEvents() >= *retired.lastEvent;
    });
    if (freed > 0) {
        returnFreeMemory();
    }
}

} // namespace vornic
