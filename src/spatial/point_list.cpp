#include "spatial/point_list.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>
#include <set>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr float kFarthestListed = 1e6f;
constexpr std::size_t kLongestName = 200;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The text of a field that begins with a quote, taken off `rest` with it; nothing when the quote
// has no end.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    std::string field;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        if (rest[i] != '"') {
            field += rest[i];
            continue;
        }
        if (i + 1 < rest.size() && rest[i + 1] == '"') {
            field += rest[i++];
            continue;
        }
        rest.remove_prefix(i + 1);
        return field;
    }
    return std::nullopt;
}

// The fields of a line; nothing when its quotes are wrong.
std::optional<std::vector<std::string>> FieldsOf(std::string_view line) {
    std::vector<std::string> fields;
    for (std::string_view rest = line;;) {
        rest = rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
        if (rest.starts_with('"')) {
            auto field = TakeQuoted(rest);
            if (!field) return std::nullopt;
            fields.push_back(*std::move(field));
            rest = rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
            if (!rest.empty() && rest.front() != ',') return std::nullopt;
        } else {
            const std::size_t end = std::min(rest.find(','), rest.size());
            fields.emplace_back(Trimmed(rest.substr(0, end)));
            rest.remove_prefix(end);
        }
        if (rest.empty()) return fields;
        rest.remove_prefix(1);
    }
}

std::optional<float> CoordinateFrom(const std::string& text) {
    float value = 0;
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stopped != end || !(std::abs(value) <= kFarthestListed))
        return std::nullopt;
    return value;
}

constexpr std::size_t kCoordinates = 3;

std::optional<NamedPoint> PointFrom(const std::vector<std::string>& fields) {
    const std::size_t first = fields.size() % kCoordinates;
    if (fields.size() < kCoordinates || first > 1) return std::nullopt;
    std::vector<float> numbers;
    for (std::size_t i = first; i < fields.size(); ++i) {
        const auto number = CoordinateFrom(fields[i]);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    NamedPoint point{first == 1 ? fields.front() : std::string(), {}};
    point.position = {numbers[0], numbers[1], numbers[2]};
    for (std::size_t i = kCoordinates; i < numbers.size(); i += kCoordinates)
        point.onward.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    return point;
}

bool IsHeading(const std::vector<std::string>& fields) {
    using Fields = std::vector<std::string>;
    return fields == Fields{"x", "y", "z"} || fields == Fields{"name", "x", "y", "z"};
}

std::string NumberText(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::map<std::string, std::string, std::less<>> ValuesOf(const NamedPoint& point,
                                                         std::size_t number, std::size_t digits,
                                                         std::string_view soundName) {
    const PolarPosition polar = PolarOf(point.position);
    std::string numberText = std::to_string(number);
    numberText.insert(0, digits - std::min(digits, numberText.size()), '0');
    return {{"name", point.name.empty() ? std::string(soundName) : point.name},
            {"number", numberText},
            {"azimuth", NumberText("%.0f", std::fmod(std::round(polar.azimuth), 360.0))},
            // A sum, so that no angle is "-0".
            {"elevation", NumberText("%.0f", std::round(polar.elevation) + 0.0)},
            {"distance", NumberText("%.2f", polar.distance)}};
}

Result<std::string> Filled(std::string_view pattern,
                           const std::map<std::string, std::string, std::less<>>& values) {
    std::string text;
    while (!pattern.empty()) {
        const std::size_t open = std::min(pattern.find('{'), pattern.size());
        text += pattern.substr(0, open);
        pattern.remove_prefix(open);
        if (pattern.empty()) break;
        const std::size_t close = pattern.find('}');
        const auto value =
            values.find(pattern.substr(1, close == std::string_view::npos ? 0 : close - 1));
        if (close == std::string_view::npos || value == values.end())
            return Failed(
                "The pattern's fields are {name}, {number}, {azimuth}, {elevation} and "
                "{distance}.");
        text += value->second;
        pattern.remove_prefix(close + 1);
    }
    return text;
}

void MakeFileName(std::string& text) {
    constexpr std::string_view kForbidden = "/\\:*?\"<>|";
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F ||
            kForbidden.find(c) != std::string_view::npos)
            c = '_';
    // Not hidden, and no way out of the folder.
    if (text.empty() || text.front() == '.') text.insert(text.begin(), '_');
}

std::string Unused(const std::string& name, std::set<std::string>& used) {
    std::string unused = name;
    for (int i = 2; !used.insert(unused).second; ++i) unused = name + '_' + std::to_string(i);
    return unused;
}

}  // namespace

Result<std::vector<NamedPoint>> ParsePoints(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::vector<NamedPoint> points;
    for (int line = 1; !text.empty(); ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view words = Trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (words.empty()) continue;
        const auto fields = FieldsOf(words);
        if (line == 1 && fields && IsHeading(*fields)) continue;
        const auto point = fields ? PointFrom(*fields) : std::nullopt;
        if (!point)
            return Failed("Line " + std::to_string(line) +
                          " of the points is neither \"x,y,z\" nor \"name,x,y,z\".");
        if (points.size() == kMostListedPoints) return Failed("There are too many points.");
        points.push_back(*point);
    }
    if (points.empty()) return Failed("There are no points.");
    return points;
}

Result<std::vector<std::string>> NamesOfPlaces(std::string_view pattern,
                                               const std::vector<NamedPoint>& points,
                                               std::string_view soundName) {
    const std::size_t digits = std::max<std::size_t>(2, std::to_string(points.size()).size());
    std::vector<std::string> names;
    std::set<std::string> used;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Result<std::string> name = Filled(pattern, ValuesOf(points[i], i + 1, digits, soundName));
        if (!name) return name.Ended();
        MakeFileName(*name);
        if (name->size() > kLongestName) return Failed("A file name would become too long.");
        names.push_back(Unused(*name, used));
    }
    return names;
}

}  // namespace sonavel
