// The pages of the manual (docs/manual, inside the program) as a table, and which of them explains
// a window.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <span>

class QWidget;

namespace sonavel {

struct ManualPage {
    const char* name;   // of the file, without ".md"
    const char* title;  // its first heading
    const char* group;  // in the list of contents
};

// In the order of the contents.
std::span<const ManualPage> ManualPages();

QUrl UrlOfPage(const QString& name);
// The page's Markdown; empty when there is no such page.
QString TextOfPage(const QString& name);
// The names of the pages that hold each of these words, in capitals or not; of all pages when there
// is no word.
QStringList PagesWith(const QString& words);
// The page that such a search opens, of those that it found whose title has the words, or else of
// all: the current one where it is among them, and where none was found.
QString PageToOpen(const QStringList& found, const QString& words, const QString& current);

// The page about a dialog or another window; empty where there is none.
QString PageOfWindow(const QWidget* window);

}  // namespace sonavel
