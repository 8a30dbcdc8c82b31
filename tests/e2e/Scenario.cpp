#include "tests/e2e/Scenario.h"

#include <fstream>
#include <sstream>

namespace {

const char kDescriptionFile[] = "scenario.txt";

// Words separated by blanks; a word in double quotes may hold blanks.
std::vector<std::string> SplitWords(const std::string& text)
{
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    bool inWord = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            inWord = true;
        } else if ((c == ' ' || c == '\t') && !quoted) {
            if (inWord) {
                words.push_back(word);
            }
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord) {
        words.push_back(word);
    }
    return words;
}

bool ApplySetting(const std::string& key, const std::vector<std::string>& values, Scenario& scenario,
                  std::string& error)
{
    if (key == "receiver" && !values.empty()) {
        scenario.receiver = values.front();
        scenario.simulatorOptions.assign(values.begin() + 1, values.end());
    } else if (key == "port" && values.size() == 1) {
        scenario.port = values.front();
    } else if (key == "arguments") {
        scenario.arguments = values;
    } else if (key == "control-device" && values.size() == 1 &&
               (values.front() == "recorded" || values.front() == "missing")) {
        scenario.controlDevice = values.front() == "recorded";
    } else {
        error = "cannot use \"" + key + "\" with " + std::to_string(values.size()) + " values";
        return false;
    }
    return true;
}

}  // namespace

bool ReadScenario(const std::string& root, const std::string& name, Scenario& scenario,
                  std::string& error)
{
    scenario = Scenario();
    scenario.name = name;
    scenario.folder = root + "/" + name;
    std::ifstream description(scenario.folder + "/" + kDescriptionFile);
    if (!description) {
        error = "cannot read " + scenario.folder + "/" + kDescriptionFile;
        return false;
    }
    std::string line;
    while (std::getline(description, line)) {
        std::vector<std::string> words = SplitWords(line);
        if (words.empty() || words.front()[0] == '#') {
            continue;
        }
        const std::string key = words.front();
        words.erase(words.begin());
        if (!ApplySetting(key, words, scenario, error)) {
            return false;
        }
    }
    if (scenario.HasReceiver() && scenario.port.empty()) {
        error = "a receiver needs a port to be linked to";
        return false;
    }
    return true;
}
