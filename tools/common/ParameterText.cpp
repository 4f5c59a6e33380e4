// Finds a value by reading the display at each of a parameter's steps, since VST 2 has no other
// way.
#include "tools/common/ParameterText.h"

#include "tools/common/ToolError.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace tool {

namespace {

// Parameters with more steps are treated as continuous.
constexpr int kMaxSteps = 10000;

// A message lists all values of a parameter if there are no more than this.
constexpr std::size_t kMaxListed = 16;

std::string lowerCase(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// Levenshtein distance.
std::size_t editDistance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
        }
    }
    return row[b.size()];
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

// "3.5" of "3.5 dB" if the unit is dB.
std::string withoutUnit(const std::string& text, const std::string& unit)
{
    if (unit.empty() || text.size() <= unit.size()
        || lowerCase(text.substr(text.size() - unit.size())) != lowerCase(unit))
        return text;
    return trimmed(text.substr(0, text.size() - unit.size()));
}

}  // namespace

bool parseNumber(const std::string& text, double& number)
{
    const bool plus = !text.empty() && text[0] == '+';
    const char* first = text.data() + (plus ? 1 : 0);
    const char* last = text.data() + text.size();
    if (plus && first != last && *first == '-')
        return false;
    double value = 0.0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error != std::errc() || end != last || !std::isfinite(value))
        return false;
    number = value;
    return true;
}

std::string trimmed(const std::string& text)
{
    const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

ParameterText::ParameterText(std::unique_ptr<host::Plugin> plugin) : plugin(std::move(plugin))
{
    const int parameters = fields().numParams;
    for (int index = 0; index < parameters; ++index)
        titles.push_back(this->plugin->paramName(index));
}

std::vector<Assignment> ParameterText::parse(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        throw ToolError("'" + text + "' is not of the form TITLE=VALUE");
    std::vector<Assignment> assignments;
    for (const int index : indicesOf(trimmed(text.substr(0, equals))))
        assignments.push_back({index, valueOf(index, text.substr(equals + 1))});
    return assignments;
}

int ParameterText::find(const std::string& title) const
{
    const std::string lower = lowerCase(title);
    for (std::size_t index = 0; index < titles.size(); ++index)
        if (lowerCase(titles[index]) == lower)
            return static_cast<int>(index);
    return -1;
}

std::vector<int> ParameterText::indicesOf(const std::string& title) const
{
    if (find(title) < 0) {
        // Titles end in the channel's letter, those of the second equaliser in L2 or R2.
        const bool second = !title.empty() && title.back() == '2';
        const std::string name = second ? title.substr(0, title.size() - 1) : title;
        const char* end = second ? "2" : "";
        const int left = find(name + "L" + end);
        const int right = find(name + "R" + end);
        if (left >= 0 && right >= 0)
            return {left, right};
    }
    return {indexOf(title)};
}

int ParameterText::indexOf(const std::string& title) const
{
    const int found = find(title);
    if (found >= 0)
        return found;
    const std::string lower = lowerCase(title);
    std::vector<std::pair<std::size_t, std::string>> similar;
    for (std::size_t index = 0; index < titles.size(); ++index) {
        const std::string candidate = lowerCase(titles[index]);
        // If one begins with the other, they count as one letter apart.
        const std::size_t shorter = std::min(candidate.size(), lower.size());
        const bool startsAlike =
            shorter >= 2 && candidate.compare(0, shorter, lower, 0, shorter) == 0;
        const std::size_t distance = startsAlike ? 1 : editDistance(candidate, lower);
        if (distance <= 2)
            similar.emplace_back(distance, titles[index]);
    }
    std::stable_sort(similar.begin(), similar.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> best;
    for (const auto& [distance, candidate] : similar)
        if (best.size() < 4)
            best.push_back(candidate);
    throw ToolError(
        "the plug-in has no parameter '" + title + "'"
        + (best.empty() ? "; 'zkrt46 params' lists them" : "; similar ones are " + joined(best)));
}

float ParameterText::valueOf(int index, const std::string& typed)
{
    const std::string text = trimmed(typed);
    double number = 0.0;
    if (!text.empty() && text.back() == 'n'
        && parseNumber(text.substr(0, text.size() - 1), number)) {
        if (number < 0.0 || number > 1.0)
            throw ToolError(title(index) + ": a normalised value lies between 0n and 1n, not at '"
                            + text + "'");
        return static_cast<float>(number);
    }

    const std::vector<std::string>& shown = displays(index);
    if (shown.empty())
        throw ToolError(title(index) + " has no steps: give a normalised value such as 0.5n");
    const auto valueOfStep = [&](std::size_t step) {
        return static_cast<float>(static_cast<double>(step)
                                  / static_cast<double>(shown.size() - 1));
    };
    const std::string plain = withoutUnit(text, unit(index));
    const bool isNumber = parseNumber(plain, number);
    for (std::size_t step = 0; step < shown.size(); ++step) {
        double stepNumber = 0.0;
        const bool sameNumber = isNumber && parseNumber(shown[step], stepNumber)
            && std::fabs(stepNumber - number) < 1e-9;
        if (sameNumber || lowerCase(shown[step]) == lowerCase(plain))
            return valueOfStep(step);
    }
    refuseValue(index, text);
}

std::string ParameterText::displayAt(int index, float value)
{
    const float before = plugin->parameter(index);
    plugin->setParameter(index, value);
    std::string display = plugin->paramDisplay(index);
    plugin->setParameter(index, before);
    return display;
}

const std::vector<std::string>& ParameterText::displays(int index)
{
    const auto known = displayCache.find(index);
    if (known != displayCache.end())
        return known->second;
    std::vector<std::string> shown;
    const int last = steps(index);
    if (last > 0 && last <= kMaxSteps)
        for (int step = 0; step <= last; ++step)
            shown.push_back(displayAt(index, static_cast<float>(static_cast<double>(step) / last)));
    return displayCache[index] = std::move(shown);
}

void ParameterText::refuseValue(int index, const std::string& text)
{
    const std::vector<std::string>& shown = displays(index);
    const std::string start = title(index) + " cannot be '" + text + "'";
    if (shown.size() <= kMaxListed)
        throw ToolError(start + "; it can be " + joined(shown));

    const std::string unitText = unit(index).empty() ? "" : " " + unit(index);
    double wanted = 0.0;
    double below = -std::numeric_limits<double>::infinity();
    double above = std::numeric_limits<double>::infinity();
    std::string belowText, aboveText;
    if (parseNumber(withoutUnit(text, unit(index)), wanted)) {
        for (const std::string& candidate : shown) {
            double number = 0.0;
            if (!parseNumber(candidate, number))
                continue;
            if (number < wanted && number > below) {
                below = number;
                belowText = candidate;
            }
            if (number > wanted && number < above) {
                above = number;
                aboveText = candidate;
            }
        }
    }
    if (!belowText.empty() && !aboveText.empty())
        throw ToolError(start + "; the nearest values are " + belowText + " and " + aboveText
                        + unitText);
    throw ToolError(start + "; it goes from " + shown.front() + " to " + shown.back() + unitText);
}

}  // namespace tool
