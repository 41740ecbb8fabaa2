// The edits of a document since it was opened, as a script that does them again. Edits that were
// undone are left out until they are redone.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/history_listener.h"
#include "document/step_words.h"

namespace sonavel {

class StepScript {
  public:
    // --- What the front end says

    // Of the edits up to End(). Of several that begin before it ends, the first counts.
    void Begin(StepWords words);
    void End();
    // The edit under way did not do all that its words say.
    void LoseWords();
    // A command has left this for later ones: its lines, and a mark of what it left.
    void NoteLeft(Supply supply, std::vector<std::string> lines, std::uint64_t mark);
    // What the next edit that takes such finds there.
    void NoteFound(Supply supply, std::uint64_t mark) { Left(supply).found = mark; }

    // --- What the document says

    // `now`: the sound behind the change.
    void OnHistoryChange(const HistoryChange& change, const Sound& now);

    // Commands a line each. What a script has no words for is a comment that says so.
    std::string Text() const;
    bool IsEmpty() const;

  private:
    // What was left, and at which state of the sound: that behind so many edits with that mark.
    struct Source {
        std::vector<std::string> lines = {};
        std::uint64_t mark = 0;
        std::size_t edits = 0;
        std::uint64_t state = 0;
        std::uint64_t serial = 0;
    };
    struct Place {
        Source last;
        std::uint64_t found = 0;
    };
    struct Edit {
        std::uint64_t id = 0;
        std::uint64_t step = 0;  // the id of the one whose undo step it belongs to; 0 for none
        bool undone = false;
        bool marksAlone = false;
        std::string name = {};
        std::vector<std::string> lines = {};
        std::optional<Supply> takes = {};
        Source source = {};         // of what it takes
        std::uint64_t cutClip = 0;  // the serial of what it left on the clipboard, when it cut
    };
    class Writer;

    Place& Left(Supply supply) { return places_[static_cast<std::size_t>(supply)]; }
    void Add(const HistoryChange& change, const Sound& now);
    std::uint64_t StepOf(const HistoryChange& change, std::uint64_t id) const;
    void TakeWords(Edit& edit);
    std::vector<const Edit*> Standing() const;
    // Ids of a row of edits in one number.
    static std::uint64_t StateBehind(std::uint64_t before, const Edit& edit);

    std::vector<Edit> edits_;
    std::array<Place, 2> places_;
    std::optional<StepWords> words_;
    int depth_ = 0;
    std::uint64_t lastId_ = 0;
};

// Words for the edits while it lives.
class DescribedStep {
  public:
    DescribedStep(StepScript& script, StepWords words) : script_(script) {
        script_.Begin(std::move(words));
    }
    ~DescribedStep() { script_.End(); }
    DescribedStep(const DescribedStep&) = delete;
    DescribedStep& operator=(const DescribedStep&) = delete;

  private:
    StepScript& script_;
};

}  // namespace sonavel
