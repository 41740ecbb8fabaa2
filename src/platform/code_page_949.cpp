#include "platform/code_page_949.h"

#include <iconv.h>

#include <algorithm>
#include <bit>
#include <cstdint>

namespace sonavel {
namespace {

class Converter {
  public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (IsOpen()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Nothing when a byte sequence of the text has no counterpart.
    std::optional<std::string> Convert(std::string_view text) {
        if (!IsOpen()) return std::nullopt;
        std::string copy(text);
        // A character grows at most from one byte of the code page to three of UTF-8.
        std::string result(text.size() * 3 + 4, '\0');
        char* from = copy.data();
        std::size_t fromLeft = copy.size();
        char* to = result.data();
        std::size_t toLeft = result.size();
        if (iconv(handle_, &from, &fromLeft, &to, &toLeft) != 0 || fromLeft != 0)
            return std::nullopt;
        result.resize(result.size() - toLeft);
        return result;
    }

  private:
    bool IsOpen() const { return std::bit_cast<std::intptr_t>(handle_) != -1; }

    iconv_t handle_;
};

struct LeadByte {
    std::size_t length;  // of the whole sequence, 0 for a byte that starts none
    std::uint32_t bits;
    std::uint32_t least;  // the least character that needs this length
};

LeadByte ReadLeadByte(std::uint8_t byte) {
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {2, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

}  // namespace

std::size_t Utf8CharacterLength(std::string_view bytes) {
    const LeadByte lead = ReadLeadByte(static_cast<std::uint8_t>(bytes[0]));
    if (lead.length == 0 || lead.length > bytes.size()) return 0;
    std::uint32_t character = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<std::uint8_t>(bytes[i]);
        if ((byte & 0xC0) != 0x80) return 0;
        character = (character << 6) | (byte & 0x3Fu);
    }
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return character < lead.least || surrogate || character > 0x10FFFF ? 0 : lead.length;
}

bool IsValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = Utf8CharacterLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> Utf8FromCodePage949(std::string_view bytes) {
    return Converter("UTF-8", "CP949").Convert(bytes);
}

std::optional<std::string> CodePage949FromUtf8(std::string_view text) {
    return Converter("CP949", "UTF-8").Convert(text);
}

std::string DisplayText(std::string_view bytes) {
    if (IsValidUtf8(bytes)) return std::string(bytes);
    if (auto text = Utf8FromCodePage949(bytes)) return *std::move(text);
    std::string text(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<std::uint8_t>(c) >= 0x80; }, '?');
    return text;
}

}  // namespace sonavel
