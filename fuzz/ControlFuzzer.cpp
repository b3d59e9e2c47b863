#include "Vornic/app/Control.h"
#include "VornicCore/realtime/Fatal.h"
#include "tests/support/ModelFixture.h"

#include <nlohmann/json.hpp>

#include <string>

namespace {

using Words = vornic::RunningCopy::Words;

/// The program's model with everything around it played by the test support.
class RunningModel final : public vornic::ModelFixture {
  public:
    RunningModel() { vornic::require(startToPlay(), "the model starts"); }

    vornic::ControlAnswer say(const Words& words) {
        const auto answer = vornic::control(*model, words, [] {});
        scheduler.run();
        return answer;
    }
    double volume() const { return model->volume(); }

  private:
    void TestBody() override {}
};

/// A message in the input ends with a line break, a word with a blank that is no space.
std::vector<Words> messages(std::string_view text) {
    std::vector<Words> found(1);
    std::string word;
    for (const char character : text) {
        if (character != '\t' && character != '\n') {
            word += character;
            continue;
        }
        found.back().push_back(std::exchange(word, {}));
        if (character == '\n') {
            found.emplace_back();
        }
    }
    if (!word.empty()) {
        found.back().push_back(word);
    }
    return found;
}

} // namespace

/// Whatever is said over the bus, there is an answer, and the state can be told afterwards.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static RunningModel model;
    for (const Words& words : messages({reinterpret_cast<const char*>(data), size})) {
        const auto answer = model.say(words);
        vornic::require(answer.status == 0 || answer.status == 1, "a known status");
        vornic::require(answer.status == 0 || !answer.text.empty(), "a refusal says why");
    }
    vornic::require(model.volume() >= 0 && model.volume() <= 1, "the volume is in its range");
    const auto status = nlohmann::json::parse(model.say({"status", "--json"}).text, nullptr, false);
    vornic::require(status.is_object() && status.contains("board"), "the state can be told");
    return 0;
}
