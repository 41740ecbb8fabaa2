#include "platform/qt/file_names.h"

#include <algorithm>
#include <string>

#include "platform/code_page_949.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {
namespace {

// One half of a pair of characters, which never stands alone in a text: these 128 stand for the
// bytes from 0x80 on.
constexpr char16_t kFirstOddByte = 0xDC80;
constexpr char16_t kLastOddByte = 0xDCFF;
constexpr std::size_t kLongestCharacter = 4;

// The length of the character that `bytes` begins with, 0 when there is none.
std::size_t CharacterLength(std::string_view bytes) {
    for (std::size_t length = 1; length <= std::min(kLongestCharacter, bytes.size()); ++length)
        if (IsValidUtf8(bytes.substr(0, length))) return length;
    return 0;
}

bool IsOddByte(QChar c) {
    return c.unicode() >= kFirstOddByte && c.unicode() <= kLastOddByte;
}

}  // namespace

QString FileText(const std::filesystem::path& path) {
    std::string_view bytes = path.native();
    if (IsValidUtf8(bytes)) return Utf8Text(bytes);
    QString text;
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        if (length > 0)
            text += Utf8Text(bytes.substr(0, length));
        else
            text += QChar(char16_t(0xDC00 + static_cast<unsigned char>(bytes[0])));
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::filesystem::path FilePath(const QString& fileText) {
    std::string bytes;
    for (qsizetype i = 0; i < fileText.size(); ++i) {
        const bool pair = fileText[i].isHighSurrogate() && i + 1 < fileText.size();
        if (IsOddByte(fileText[i]))
            bytes += static_cast<char>(fileText[i].unicode() & 0xFF);
        else
            bytes += fileText.mid(i, pair ? 2 : 1).toStdString();
        if (pair) ++i;
    }
    return bytes;
}

QString ShownFileText(const QString& fileText) {
    return Utf8Text(DisplayText(FilePath(fileText).native()));
}

QUrl FileUrl(const std::filesystem::path& path) {
    return QUrl::fromEncoded("file://" +
                             QByteArray::fromStdString(path.native()).toPercentEncoding("/"));
}

QString FileTextOf(const QUrl& url) {
    if (!url.isLocalFile()) return {};
    const QByteArray bytes =
        QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    return FileText(bytes.toStdString());
}

}  // namespace sonavel
