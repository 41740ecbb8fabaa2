#include "effects/effect_words.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "document/step_words.h"

namespace sonavel {
namespace {

std::optional<std::string> ValueWord(const EffectParameter& parameter, double value) {
    if (parameter.decimals == kSwitch) return value != 0 ? "on" : "off";
    if (parameter.words.empty()) return NumberWord(value, parameter.decimals);
    const auto index = static_cast<std::size_t>(std::max(std::lround(value), 0L));
    if (index >= parameter.words.size()) return std::nullopt;
    return parameter.words[index];
}

// A row whose name is a command, or the mode among its values.
EffectForm FormOf(const Effect& effect, std::span<const double> values) {
    if (effect.modeNames.empty()) return {effect, effect.name};
    for (std::size_t i = 0; i < values.size(); ++i)
        if (effect.parameters[i].mode == kIsTheMode) {
            const int mode = static_cast<int>(std::lround(values[i]));
            return {effect, effect.modeNames[static_cast<std::size_t>(mode)], mode};
        }
    return {effect, effect.modeNames.front()};
}

class CommandWriter {
  public:
    CommandWriter(const EffectForm& form, std::span<const double> values)
        : form_(form), values_(values), command_(form.name) {}

    std::optional<std::string> Write() {
        std::string keys;
        const auto parameters = form_.effect.parameters;
        for (std::size_t i = 0; i < values_.size();) {
            const auto group = ParametersOfKey(parameters, i);
            if (form_.Asks(group.front()) && !AddWord(group, i, keys)) return std::nullopt;
            i += group.size();
        }
        return command_ + keys;
    }

  private:
    bool AddWord(std::span<const EffectParameter> group, std::size_t first, std::string& keys) {
        std::string list;
        for (std::size_t i = 0; i < group.size(); ++i) {
            const auto word = ValueWord(group[i], values_[first + i]);
            if (!word) return false;
            list += (i > 0 ? "," : "") + *word;
        }
        if (group.front().position)
            command_ += ' ' + list;
        else
            keys += std::string(" ") + group.front().key + '=' + list;
        return true;
    }

    EffectForm form_;
    std::span<const double> values_;
    std::string command_;
};

// A script says by the keys what it normalises to.
std::optional<std::string> NormaliseCommand(const Effect& effect, std::span<const double> values) {
    const auto peak = ValueWord(effect.parameters[1], values[1]);
    const auto loudness = ValueWord(effect.parameters[2], values[2]);
    const auto channels = ValueWord(effect.parameters[3], values[3]);
    const bool toLoudness = values[0] != 0;
    if (!peak || !channels || (toLoudness && !loudness)) return std::nullopt;
    return "normalise peak=" + *peak + (toLoudness ? " loudness=" + *loudness : "") +
           " channels=" + *channels;
}

}  // namespace

std::span<const EffectParameter> ParametersOfKey(std::span<const EffectParameter> parameters,
                                                 std::size_t index) {
    const std::string_view key = parameters[index].key;
    std::size_t end = index + 1;
    while (end < parameters.size() && parameters[end].key == key) ++end;
    return parameters.subspan(index, end - index);
}

std::optional<std::string> CommandOf(const Effect& effect, std::span<const double> values,
                                     Applying applying) {
    if (effect.scripted == Scripted::kElsewhere) return NormaliseCommand(effect, values);
    auto command = CommandWriter(FormOf(effect, values), values).Write();
    if (command && effect.OffersApply() && applying == Applying::kAlways) *command += " apply=on";
    return command;
}

std::uint64_t MarkOf(const std::optional<NoiseProfile>& profile) {
    if (!profile) return 0;
    std::uint64_t mark = profile->samplesPerSecond;
    for (const NoiseBins& bins : profile->channels)
        mark = 31 * mark + MarkOf({reinterpret_cast<const std::uint8_t*>(bins.data()),
                                   bins.size() * sizeof(float)});
    return mark;
}

}  // namespace sonavel
