#include "app/help/manual_window.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QImage>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <map>

#include "app/help/manual_pages.h"

namespace sonavel {
namespace {

constexpr QSize kManualSize{980, 700};
constexpr int kContentsWidth = 240;
constexpr int kMargin = 16;

QToolButton* MakeStep(const QString& text, const QString& toolTip, Qt::Key key,
                      QTextBrowser* page) {
    auto* button = new QToolButton(page->parentWidget());
    button->setText(text);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setShortcut(QKeySequence(Qt::ALT | key));
    button->setAutoRaise(true);
    button->setEnabled(false);
    return button;
}

// Takes pages as the manual has them, with what comes of the program's tables.
class PageBrowser : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& url) override {
        const QFileInfo file(url.path());
        if (file.suffix() == QLatin1String("png")) return PictureOf(url);
        if (file.suffix() != QLatin1String("md")) return QTextBrowser::loadResource(type, url);
        return TextOfPage(file.completeBaseName()).toUtf8();
    }

  private:
    // A pixel of it is one of the screen's, or a square of them: between two numbers its texts
    // would be blurred.
    QVariant PictureOf(const QUrl& url) const {
        QImage picture(u':' + document()->baseUrl().resolved(url).path());
        picture.setDevicePixelRatio(devicePixelRatioF() / std::floor(devicePixelRatioF()));
        return picture;
    }
};

}  // namespace

ManualWindow::ManualWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      search_(new QLineEdit(this)),
      contents_(new QTreeWidget(this)),
      page_(new PageBrowser(this)) {
    setWindowTitle(tr("Sonavel Manual"));
    setObjectName(QStringLiteral("Manual"));
    auto* splitter = new QSplitter(this);
    splitter->addWidget(MakeContents());
    splitter->addWidget(MakePageSide());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, search_, qOverload<>(&QLineEdit::setFocus));
    auto* close = new QShortcut(Qt::Key_Escape, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    FillContents(PagesWith({}));
    // All titles whole, in any size of the desktop's texts.
    const int contents = std::max(kContentsWidth, WidthOfContents());
    const int page = kManualSize.width() - kContentsWidth;
    resize(contents + page, kManualSize.height());
    splitter->setSizes({contents, page});
}

int ManualWindow::WidthOfContents() const {
    constexpr int kDepth = 2;
    constexpr int kAroundTitles = 12;
    int widest = 0;
    for (const ManualPage& page : ManualPages())
        widest = std::max(
            widest, contents_->fontMetrics().horizontalAdvance(QString::fromUtf8(page.title)));
    const QMargins around = contents_->parentWidget()->layout()->contentsMargins();
    return widest + kDepth * contents_->indentation() + kAroundTitles + around.left() +
           around.right() + contents_->verticalScrollBar()->sizeHint().width();
}

QWidget* ManualWindow::MakeContents() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    search_->setPlaceholderText(tr("Search the manual"));
    search_->setAccessibleName(tr("Search the manual"));
    search_->setToolTip(tr("Lists the pages that hold every word typed here."));
    search_->setClearButtonEnabled(true);
    contents_->setHeaderHidden(true);
    contents_->setAccessibleName(tr("Contents"));
    layout->addWidget(search_);
    layout->addWidget(contents_);
    connect(search_, &QLineEdit::textChanged, this, &ManualWindow::Search);
    connect(contents_, &QTreeWidget::currentItemChanged, this, &ManualWindow::TakeItem);
    return side;
}

QWidget* ManualWindow::MakePageSide() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    page_->setParent(side);
    page_->setOpenLinks(false);
    page_->setAccessibleName(tr("Page"));
    page_->document()->setDocumentMargin(kMargin);
    QToolButton* back = MakeStep(QStringLiteral("←"), tr("Back"), Qt::Key_Left, page_);
    QToolButton* forward = MakeStep(QStringLiteral("→"), tr("Forward"), Qt::Key_Right, page_);
    auto* steps = new QHBoxLayout;
    steps->addWidget(back);
    steps->addWidget(forward);
    steps->addStretch(1);
    layout->addLayout(steps);
    layout->addWidget(page_);
    connect(back, &QToolButton::clicked, page_, &QTextBrowser::backward);
    connect(forward, &QToolButton::clicked, page_, &QTextBrowser::forward);
    connect(page_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    connect(page_, &QTextBrowser::anchorClicked, this, &ManualWindow::Follow);
    connect(page_, &QTextBrowser::sourceChanged, this, &ManualWindow::MarkCurrent);
    return side;
}

void ManualWindow::ShowPage(const QString& name) {
    page_->setSource(UrlOfPage(name));
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

QString ManualWindow::CurrentPage() const {
    return QFileInfo(page_->source().path()).completeBaseName();
}

void ManualWindow::FillContents(const QStringList& names) {
    const QSignalBlocker blocker(contents_);
    contents_->clear();
    std::map<QString, QTreeWidgetItem*> groups;
    for (const ManualPage& page : ManualPages()) {
        if (!names.contains(QLatin1String(page.name))) continue;
        QTreeWidgetItem*& group = groups[QString::fromLatin1(page.group)];
        if (!group) {
            group = new QTreeWidgetItem(contents_, {tr(page.group)});
            group->setFlags(Qt::ItemIsEnabled);
        }
        auto* item = new QTreeWidgetItem(group, {QString::fromUtf8(page.title)});
        item->setToolTip(0, item->text(0));
        item->setData(0, Qt::UserRole, QString::fromLatin1(page.name));
    }
    contents_->expandAll();
    MarkCurrent();
}

void ManualWindow::Search(const QString& words) {
    const QStringList found = PagesWith(words);
    FillContents(found);
    const QString page = PageToOpen(found, words, CurrentPage());
    if (page != CurrentPage()) page_->setSource(UrlOfPage(page));
    const QStringList single = words.split(u' ', Qt::SkipEmptyParts);
    if (single.isEmpty()) return;
    page_->moveCursor(QTextCursor::Start);
    page_->find(single.front());
}

void ManualWindow::TakeItem(const QTreeWidgetItem* item) {
    const QString name = item ? item->data(0, Qt::UserRole).toString() : QString();
    if (!name.isEmpty() && name != CurrentPage()) page_->setSource(UrlOfPage(name));
}

void ManualWindow::MarkCurrent() {
    const QSignalBlocker blocker(contents_);
    for (QTreeWidgetItemIterator i(contents_); *i; ++i)
        if ((*i)->data(0, Qt::UserRole).toString() == CurrentPage()) contents_->setCurrentItem(*i);
}

void ManualWindow::Follow(const QUrl& link) {
    const QUrl target = page_->source().resolved(link);
    if (target.scheme() == QLatin1String("qrc"))
        page_->setSource(target);
    else if (target.scheme() == QLatin1String("https"))
        QDesktopServices::openUrl(target);
}

}  // namespace sonavel
