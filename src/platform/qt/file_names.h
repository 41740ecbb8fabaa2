// File names between the system, where they are bytes, and the toolkit, where they are text. Bytes
// that are not UTF-8 become characters of their own, so that every name that the system has comes
// back as it was; such texts mean nothing to the toolkit's own file functions.
#pragma once

#include <QString>
#include <QUrl>
#include <filesystem>

namespace sonavel {

QString FileText(const std::filesystem::path& path);
std::filesystem::path FilePath(const QString& fileText);

// What a person reads: names that are not UTF-8 are taken for code page 949.
QString ShownFileText(const QString& fileText);

QUrl FileUrl(const std::filesystem::path& path);
// The text of the local file that the URL names; empty when it names none.
QString FileTextOf(const QUrl& url);

}  // namespace sonavel
