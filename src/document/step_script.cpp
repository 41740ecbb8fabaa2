#include "document/step_script.h"

#include <algorithm>
#include <map>
#include <utility>

#include "document/marker_words.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr std::string_view kCut = "cut";

}  // namespace

// --- What the front end says

void StepScript::Begin(StepWords words) {
    if (depth_++ == 0) words_ = std::move(words);
}

void StepScript::End() {
    if (--depth_ == 0) words_.reset();
}

void StepScript::LoseWords() {
    if (words_) words_->lines.clear();
}

void StepScript::NoteLeft(Supply supply, std::vector<std::string> lines, std::uint64_t mark) {
    Source& source = Left(supply).last;
    source = {.lines = std::move(lines), .mark = mark, .serial = ++lastId_};
    for (const Edit* edit : Standing()) {
        source.state = StateBehind(source.state, *edit);
        ++source.edits;
    }
}

// --- What the document says

void StepScript::OnHistoryChange(const HistoryChange& change, const Sound& now) {
    using enum HistoryChange::Kind;
    switch (change.kind) {
        case kStep:
        case kUnrecorded:
            return Add(change, now);
        case kForgotten:
            edits_.clear();
            places_ = {};
            return;
        case kUndone: {
            const auto last = std::find_if(edits_.rbegin(), edits_.rend(), [](const Edit& edit) {
                return edit.step == edit.id && !edit.undone;
            });
            if (last == edits_.rend()) return;
            for (Edit& edit : edits_) edit.undone = edit.undone || edit.step == last->id;
            return;
        }
        case kRedone: {
            const auto first = std::ranges::find_if(
                edits_, [](const Edit& edit) { return edit.step == edit.id && edit.undone; });
            if (first == edits_.end()) return;
            for (Edit& edit : edits_) edit.undone = edit.undone && edit.step != first->id;
        }
    }
}

// Edits without a step belong to the last step that stands for samples, as in the history.
std::uint64_t StepScript::StepOf(const HistoryChange& change, std::uint64_t id) const {
    if (change.kind == HistoryChange::Kind::kStep) return id;
    const auto owner = std::find_if(edits_.rbegin(), edits_.rend(), [](const Edit& edit) {
        return edit.step == edit.id && !edit.marksAlone;
    });
    return owner == edits_.rend() ? 0 : owner->id;
}

void StepScript::Add(const HistoryChange& change, const Sound& now) {
    std::erase_if(edits_, [](const Edit& edit) { return edit.undone; });
    Edit edit{.id = ++lastId_, .name = std::string(change.stepName)};
    edit.step = StepOf(change, edit.id);
    edit.marksAlone = change.record && change.record->reach == EditReach::kMarkers;
    if (edit.marksAlone)
        edit.lines =
            MarkerWords(change.record->markers, now.Markers()).value_or(std::vector<std::string>());
    else
        TakeWords(edit);
    edits_.push_back(std::move(edit));
}

void StepScript::TakeWords(Edit& edit) {
    if (!words_) return;
    edit.lines = words_->lines;
    edit.takes = words_->takes;
    if (!edit.lines.empty() && edit.lines.back() == kCut)
        edit.cutClip = Left(Supply::kClip).last.serial;
    if (!edit.takes) return;
    const Place& place = Left(*edit.takes);
    if (place.found != 0 && place.found == place.last.mark)
        edit.source = place.last;
    else
        edit.lines.clear();
}

std::uint64_t StepScript::StateBehind(std::uint64_t before, const Edit& edit) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    const std::uint64_t product = (before ^ edit.id) * kFactor;
    return product ^ (product >> 31);
}

std::vector<const StepScript::Edit*> StepScript::Standing() const {
    std::vector<const Edit*> standing;
    for (const Edit& edit : edits_)
        if (!edit.undone) standing.push_back(&edit);
    return standing;
}

// --- The script

// Puts what edits take at the state where it was left, and sees whether it is still there when it
// is taken: a script goes through each state once.
class StepScript::Writer {
  public:
    explicit Writer(const StepScript& script) : edits_(script.Standing()) {}

    std::string Write() {
        FindSources();
        for (std::size_t i = 0; i <= edits_.size(); ++i) {
            Leave(i);
            if (i < edits_.size()) WriteEdit(*edits_[i]);
        }
        return std::move(text_);
    }

  private:
    struct Leaving {
        std::uint64_t serial;
        Supply supply;
        const Source* source;
    };

    void FindSources() {
        std::vector<std::uint64_t> states = {0};
        for (const Edit* edit : edits_) states.push_back(StateBehind(states.back(), *edit));
        for (std::size_t i = 0; i < edits_.size(); ++i) {
            const Edit& edit = *edits_[i];
            if (!edit.takes || edit.lines.empty()) continue;
            const Source& source = edit.source;
            if (source.edits > i || states[source.edits] != source.state) continue;
            if (edits_[source.edits]->cutClip == source.serial) continue;  // leaves it itself
            leavings_.emplace(std::pair(source.edits, source.serial),
                              Leaving{source.serial, *edit.takes, &source});
        }
    }

    void Leave(std::size_t state) {
        for (auto at = leavings_.lower_bound({state, 0});
             at != leavings_.end() && at->first.first == state; ++at) {
            there_[static_cast<std::size_t>(at->second.supply)] = at->second.serial;
            WriteLines(at->second.source->lines);
        }
    }

    void WriteEdit(const Edit& edit) {
        const bool isThere =
            !edit.takes || there_[static_cast<std::size_t>(*edit.takes)] == edit.source.serial;
        if (!edit.lines.empty() && isThere) {
            WriteLines(edit.lines);
            if (edit.cutClip != 0) there_[static_cast<std::size_t>(Supply::kClip)] = edit.cutClip;
        } else {
            WriteComment(edit);
        }
    }

    void WriteLines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) text_ += line + '\n';
    }

    void WriteComment(const Edit& edit) {
        text_ += "# An edit that no script can do";
        if (!edit.name.empty()) text_ += ": " + DisplayText(edit.name);
        if (edit.takes == Supply::kClip) text_ += ", of a clip from elsewhere";
        if (edit.takes == Supply::kNoise) text_ += ", of a noise from elsewhere";
        text_ += '\n';
    }

    std::vector<const Edit*> edits_;
    std::map<std::pair<std::size_t, std::uint64_t>, Leaving> leavings_;
    std::array<std::uint64_t, 2> there_{};
    std::string text_;
};

std::string StepScript::Text() const {
    return Writer(*this).Write();
}

bool StepScript::IsEmpty() const {
    return std::ranges::all_of(edits_, &Edit::undone);
}

}  // namespace sonavel
