#include "Vornic/quiet/QuietRules.h"

#include <algorithm>

namespace vornic {

bool QuietRule::active(const QuietFacts& facts) const {
    return facts.holding.contains(reason) && !(optional && facts.ignored.contains(reason));
}

const QuietRule* quietRule(const QuietFacts& facts) {
    const auto found =
        std::ranges::find_if(quietRules, [&](const QuietRule& rule) { return rule.active(facts); });
    return found == quietRules.end() ? nullptr : &*found;
}

std::string statusLine(const QuietRule* rule, std::string_view boardName, Placement placement) {
    if (rule != nullptr) {
        return std::string(rule->text);
    }
    return std::string(boardName) + " · " +
           (placement == Placement::close ? "Close" : "On the desk");
}

} // namespace vornic
