// What the kinds of files call the tags that the editor knows as "title", "artist", "album",
// "date", "comment", "copyright", "genre" and "track".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sound/four_cc.h"

namespace sonavel {

// Of a chunk of an "INFO" list; its own id where the editor has no word for it.
std::string KeyOfInfo(FourCc id);
// The other way round; nothing for a key that an "INFO" list has no chunk for.
std::optional<FourCc> InfoOfKey(std::string_view key);

// Of a Vorbis comment, whose case does not count; its own name in small letters where the editor
// has no word for it.
std::string KeyOfComment(std::string_view name);

// The other way round, in capital letters; nothing for a key that cannot be the name of a comment.
std::optional<std::string> CommentOfKey(std::string_view key);

// Of a frame of an ID3 tag, of 4 letters or of 3; nothing for frames that are not kept as tags.
std::optional<std::string> KeyOfId3(std::string_view frame);
// The other way round: a text frame of version 2.4, also for a key that is the name of one; nothing
// where the key has to be the name of a text of its own.
std::optional<std::string_view> Id3OfKey(std::string_view key);

}  // namespace sonavel
