// The effects as commands, made from the engine's effect table, and what becomes of previews.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <span>

#include "effects/effect_runner.h"
#include "effects/effect_words.h"
#include "platform/failure_texts.h"
#include "script/command_rows.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

std::string NumberText(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string result = text;
    if (result.find('.') == std::string::npos) return result;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.ends_with('.')) result.pop_back();
    return result;
}

ValueRule RuleOf(std::span<const EffectParameter> group) {
    const EffectParameter& first = group.front();
    if (first.decimals == kSwitch) return ValueRule::Switch();
    if (!first.words.empty()) return ValueRule::OneOf({first.words.begin(), first.words.end()});
    if (group.size() > 1)
        return ValueRule::DecimalList(group.size(), first.least, first.greatest, first.decimals);
    if (first.decimals == 0)
        return ValueRule::Whole(std::llround(first.least), std::llround(first.greatest));
    return ValueRule::Decimal(first.least, first.greatest, first.decimals);
}

std::string DefaultOf(std::span<const EffectParameter> group) {
    if (group.front().decimals == kSwitch) return group.front().start != 0 ? "on" : "off";
    if (const auto words = group.front().words; !words.empty())
        return words[static_cast<std::size_t>(group.front().start)];
    std::string text;
    for (const EffectParameter& parameter : group)
        text += (text.empty() ? "" : ",") + NumberText(parameter.start, parameter.decimals);
    return text;
}

std::vector<KeyRule> KeysOf(const EffectForm& form) {
    std::vector<KeyRule> keys;
    const auto parameters = form.effect.parameters;
    for (std::size_t i = 0; i < parameters.size();) {
        const auto group = ParametersOfKey(parameters, i);
        const EffectParameter& first = group.front();
        if (form.Asks(first) && !first.position)
            keys.push_back({first.key, RuleOf(group), first.follows ? "" : DefaultOf(group)});
        i += group.size();
    }
    return keys;
}

std::vector<PositionalRule> PositionsOf(const EffectForm& form) {
    std::vector<PositionalRule> positions;
    for (const EffectParameter& parameter : form.effect.parameters)
        if (form.Asks(parameter) && parameter.position)
            positions.push_back({parameter.position, RuleOf({&parameter, 1})});
    return positions;
}

void AppendValues(const EffectParameter& parameter, const Value& value,
                  std::vector<double>& values) {
    if (const std::string* word = std::get_if<std::string>(&value)) {
        const auto named =
            std::ranges::find(parameter.words, std::string_view(*word),
                              [](const char* name) { return std::string_view(name); });
        values.push_back(static_cast<double>(named - parameter.words.begin()));
    }
    if (const bool* on = std::get_if<bool>(&value)) values.push_back(*on ? 1 : 0);
    if (const double* number = std::get_if<double>(&value)) values.push_back(*number);
    if (const std::int64_t* whole = std::get_if<std::int64_t>(&value))
        values.push_back(static_cast<double>(*whole));
    if (const auto* list = std::get_if<std::vector<double>>(&value))
        values.insert(values.end(), list->begin(), list->end());
}

std::vector<double> ValuesFor(const EffectForm& form, const Arguments& words) {
    std::vector<double> values;
    const auto parameters = form.effect.parameters;
    for (std::size_t i = 0; i < parameters.size();) {
        const auto group = ParametersOfKey(parameters, i);
        const EffectParameter& first = group.front();
        const char* own = first.position ? first.position : first.key;
        const char* key = words.Has(own) ? own : first.follows;
        if (form.Asks(first))
            AppendValues(first, words.Any(key), values);
        else
            values.insert(values.end(), group.size(), form.StartOf(first));
        i += group.size();
    }
    return values;
}

Outcome Apply(ScriptSession& session, const Arguments& words, const EffectForm& form) {
    const bool always = form.effect.OffersApply() && words.Switch("apply");
    return ApplyEffectTo(session.View(), session.Effects(), form.effect, ValuesFor(form, words),
                         always ? Applying::kAlways : Applying::kAsOk);
}

Outcome Preview(ScriptSession& session, const Arguments& words, const EffectForm& form) {
    if (Outcome outcome =
            PreviewEffect(form.effect, session.Target(), ValuesFor(form, words), PreviewPlay::kNo);
        !outcome)
        return outcome;
    session.Document().SetPreviewTitlePrefix(form.effect.titlePrefix);
    return Done();
}

std::string WhatItDoes(const EffectForm& form) {
    std::string text = form.effect.prompt;
    for (const EffectParameter& parameter : form.effect.parameters)
        if (parameter.explanation && form.Asks(parameter))
            text += std::string("; ") + parameter.key + ": " + parameter.explanation;
    return text;
}

CommandRow RowOf(const EffectForm& form) {
    CommandRow row = {.name = form.name,
                      .does = WhatItDoes(form),
                      .positional = PositionsOf(form),
                      .keys = KeysOf(form)};
    if (form.effect.OffersApply()) row.keys.push_back({"apply", ValueRule::Switch(), "off"});
    row.run = [form](ScriptSession& session, const Arguments& words) {
        return Apply(session, words, form);
    };
    if (form.effect.HasPreview())
        row.preview = [form](ScriptSession& session, const Arguments& words) {
            return Preview(session, words, form);
        };
    return row;
}

// --- What becomes of a preview

constexpr std::string_view kNoPreview = "There is no preview sound.";

Outcome SavePreview(ScriptSession& session, const Arguments& words) {
    CWavePlayer& preview = session.Document().Preview();
    if (!preview.HasData()) return Failed(kNoPreview);
    preview.Markers().Clear();
    preview.SetLastError("");
    if (preview.Save(session.PathOf(words.Text("PATH")), MarkerSaving::kOn)) return Done();
    return Failed(preview.LastError().empty() ? "The file could not be written."
                                              : preview.LastError());
}

Outcome NewFromPreview(ScriptSession& session, const Arguments&) {
    const CSoundDoc& document = session.Document();
    if (!document.Preview().HasData()) return Failed(kNoPreview);
    Result<Sound> copy = document.Preview().Copy();
    if (!copy) return copy.Ended();
    session.Sounds().NewDocumentFromSound(std::move(*copy), document.PreviewTitlePrefix());
    return Done();
}

}  // namespace

std::vector<CommandRow> EffectCommandRows() {
    std::vector<CommandRow> rows;
    for (const EffectForm& form : EffectForms()) rows.push_back(RowOf(form));
    for (CommandRow& row : LevelCommandRows()) rows.push_back(std::move(row));
    for (CommandRow& row : SpatialCommandRows()) rows.push_back(std::move(row));
    rows.push_back({.name = "preview",
                    .does = "Render an effect into the document's preview sound",
                    .prefix = Prefix::kPreview});
    rows.push_back({.name = "preview-save",
                    .does = "Write the preview sound as a WAV file without markers",
                    .positional = {{"PATH", ValueRule::Path()}},
                    .run = SavePreview});
    rows.push_back({.name = "preview-new",
                    .does = "Open a copy of the preview sound as a new document",
                    .run = NewFromPreview});
    return rows;
}

}  // namespace sonavel::script
