// Who wants to know of every change of a document's sound, as the record that the history keeps of
// it: called once for each, when it has come about.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>

#include "document/edit_record.h"
#include "sound/codec_values.h"

namespace sonavel {

struct HistoryChange {
    enum class Kind {
        kStep,        // an edit that can be undone
        kUnrecorded,  // an edit that stores no step, or while undo is off
        kUndone,
        kRedone,
        kForgotten,  // the document holds another sound, from a file or new, and no steps
    };

    Kind kind;
    std::string_view stepName = {};  // kStep
    // kStep and kUnrecorded: says where the sound changed. Its samples, those of before, may lie
    // elsewhere; the new ones are the sound's bytes [startByte, startByte + bytesThere).
    const EditRecord* record = nullptr;
};

class HistoryListener {
  public:
    virtual ~HistoryListener() = default;

    // `now`: the sound behind the change.
    virtual void OnHistoryChange(const HistoryChange& change, const Sound& now) = 0;
    // A file is about to be written.
    virtual void OnSaving(const std::filesystem::path&) {}
    // Tags belong to the document and to no step.
    virtual void OnTagsChanged(std::span<const SoundTag>) {}
};

}  // namespace sonavel
