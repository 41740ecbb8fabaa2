#include "exchange/foreign_text.h"

#include <optional>

#include "platform/code_page_949.h"
#include "sound/byte_order.h"
#include "sound/codec_values.h"

namespace sonavel {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& text, char32_t c) {
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80 | (c >> shift & 0x3F));
    };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        tail(6), tail(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        tail(12), tail(6), tail(0);
    }
}

std::string Utf8FromLatin1(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) AppendUtf8(text, static_cast<unsigned char>(byte));
    return text;
}

std::string_view WithoutTail(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::string Bounded(std::string text) {
    text.resize(Utf8Beginning(WithoutTail(text), kMostTagBytes).size());
    return text;
}

bool IsFirstHalf(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsSecondHalf(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

std::string_view Utf8Beginning(std::string_view text, std::size_t mostBytes) {
    if (text.size() <= mostBytes) return text;
    while (mostBytes > 0 && (text[mostBytes] & 0xC0) == 0x80) --mostBytes;
    return text.substr(0, mostBytes);
}

std::string Utf8FromUnknown(std::string_view bytes) {
    bytes = WithoutTail(bytes.substr(0, kMostTagBytes));
    if (IsValidUtf8(bytes)) return std::string(bytes);
    // A text that was cut in the midst of a character is still UTF-8.
    for (std::size_t cut = 1; cut <= 3 && bytes.size() == kMostTagBytes; ++cut)
        if (const auto whole = bytes.substr(0, bytes.size() - cut); IsValidUtf8(whole))
            return std::string(whole);
    if (std::optional<std::string> korean = Utf8FromCodePage949(bytes))
        return Bounded(std::move(*korean));
    return Bounded(Utf8FromLatin1(bytes));
}

std::string Utf8FromUtf16(std::span<const std::uint8_t> bytes, Utf16Order order) {
    const auto unit = [&](std::size_t at) -> char32_t {
        if (at + 2 > bytes.size()) return 0;
        return order == Utf16Order::kBig ? LoadBig16(&bytes[at]) : LoadLittle16(&bytes[at]);
    };
    if (unit(0) == 0xFFFE)
        order = order == Utf16Order::kBig ? Utf16Order::kLittle : Utf16Order::kBig;
    std::size_t at = unit(0) == 0xFEFF ? 2 : 0;
    std::string text;
    for (char32_t c = unit(at); c != 0 && text.size() < kMostTagBytes; c = unit(at)) {
        at += 2;
        if (IsFirstHalf(c) && IsSecondHalf(unit(at))) {
            c = 0x10000 + ((c - 0xD800) << 10) + (unit(at) - 0xDC00);
            at += 2;
        }
        AppendUtf8(text, IsFirstHalf(c) || IsSecondHalf(c) ? kReplacement : c);
    }
    return Bounded(std::move(text));
}

}  // namespace sonavel
