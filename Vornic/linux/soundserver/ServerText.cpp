#include "Vornic/linux/soundserver/ServerText.h"

#include <spa/utils/json.h>

#include <array>
#include <vector>

namespace vornic {

std::string_view lookUp(const spa_dict* properties, const char* key) {
    const char* value = properties == nullptr ? nullptr : spa_dict_lookup(properties, key);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::string nameIn(std::string_view value) {
    std::array<spa_json, 2> levels{};
    spa_json_init(levels.data(), value.data(), value.size());
    if (spa_json_enter_object(levels.data(), &levels[1]) <= 0) {
        return {};
    }
    std::array<char, 64> key{};
    while (spa_json_get_string(&levels[1], key.data(), key.size()) > 0) {
        const char* text = nullptr;
        const int length = spa_json_next(&levels[1], &text);
        if (length <= 0) {
            break;
        }
        if (std::string_view(key.data()) == "name") {
            std::vector<char> name(static_cast<std::size_t>(length) + 1);
            return spa_json_parse_stringn(text, length, name.data(), length + 1) > 0
                       ? std::string(name.data())
                       : std::string();
        }
    }
    return {};
}

} // namespace vornic
