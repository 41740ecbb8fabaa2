#include "catalogue/ui/catalogue_filter.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <algorithm>

#include "catalogue/ui/catalogue_icons.h"

namespace sonavel {

namespace {

// Leaves the keys of its window's actions to the window. Without it a line edit takes those that
// move or delete in a text on some desktops, such as Ctrl+E and Ctrl+D.
class WindowKeysFirst : public QObject {
  public:
    WindowKeysFirst(std::vector<QAction*> actions, QLineEdit* edit)
        : QObject(edit), actions_(std::move(actions)) {
        edit->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::ShortcutOverride) return false;
        const QKeySequence key(static_cast<QKeyEvent*>(event)->keyCombination());
        const auto isWindowKey = [&](const QAction* action) {
            return action->shortcutContext() == Qt::WindowShortcut && action->shortcut() == key;
        };
        if (std::none_of(actions_.begin(), actions_.end(), isWindowKey)) return false;
        event->ignore();
        return true;
    }

  private:
    std::vector<QAction*> actions_;
};

}  // namespace

CatalogueFilter::CatalogueFilter(std::vector<QAction*> windowActions, QWidget* parent)
    : QWidget(parent),
      text_(new QLineEdit(this)),
      missingOnly_(new QCheckBox(tr("&Missing only"), this)) {
    text_->setObjectName(QStringLiteral("filter"));
    text_->setPlaceholderText(tr("Filter all columns (Ctrl+F)"));
    text_->setAccessibleName(tr("Filter"));
    text_->setClearButtonEnabled(true);
    for (auto* clear : text_->findChildren<QAbstractButton*>())
        clear->setAccessibleName(tr("Clear the filter"));
    text_->addAction(CatalogueIcon("search"), QLineEdit::LeadingPosition)->setText(tr("Search"));
    new WindowKeysFirst(std::move(windowActions), text_);
    text_->setToolTip(tr("Shows the sounds alone of which some column holds this."));
    missingOnly_->setToolTip(tr("Shows the sounds alone whose files are gone."));
    missingOnly_->setObjectName(QStringLiteral("missingOnly"));
    connect(text_, &QLineEdit::textChanged, this, &CatalogueFilter::TextChanged);
    connect(missingOnly_, &QCheckBox::toggled, this, &CatalogueFilter::ShownChanged);
    AddKeys();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text_);
    row->addWidget(missingOnly_);
}

void CatalogueFilter::AddKeys() {
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        text_->setFocus();
        text_->selectAll();
    });
    auto* down = new QShortcut(Qt::Key_Down, text_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, this, &CatalogueFilter::LeftDownwards);
    auto* clear = new QShortcut(Qt::Key_Escape, text_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(clear, &QShortcut::activated, text_, &QLineEdit::clear);
}

void CatalogueFilter::FocusText() {
    text_->setFocus();
}

}  // namespace sonavel
