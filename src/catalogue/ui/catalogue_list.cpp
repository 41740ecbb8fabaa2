#include "catalogue/ui/catalogue_list.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include "catalogue/ui/catalogue_icons.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

// What a name is until it has been edited.
constexpr int kNameRole = Qt::UserRole;

}  // namespace

CatalogueList::CatalogueList(CatalogueKeeper& keeper, UserPrompts& prompts, QWidget* parent)
    : QWidget(parent), keeper_(keeper), prompts_(prompts), list_(new QListWidget(this)) {
    list_->setObjectName(QStringLiteral("catalogues"));
    list_->setAccessibleName(tr("Catalogues"));
    list_->setAlternatingRowColors(true);
    list_->setEditTriggers(QListWidget::EditKeyPressed | QListWidget::SelectedClicked);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* title = new QLabel(tr("&Catalogues"), this);
    title->setBuddy(list_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(title);
    column->addWidget(list_);
    AddActions();
    connect(list_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item && !refilling_) Q_EMIT Chosen(item->data(kNameRole).toString());
    });
    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!refilling_) RenameTo(item);
    });
}

void CatalogueList::AddActions() {
    const auto rename = [this] {
        if (list_->currentItem()) list_->editItem(list_->currentItem());
    };
    const auto make = [this] {
        if (MakeNew()) list_->editItem(list_->currentItem());
    };
    connect(AddAction("new", tr("New catalogue"), QKeySequence::New), &QAction::triggered, this,
            make);
    connect(AddAction("rename", tr("Rename catalogue"), Qt::Key_F2), &QAction::triggered, this,
            rename);
    connect(AddAction("delete", tr("Delete catalogue"), QKeySequence::Delete), &QAction::triggered,
            this, &CatalogueList::DeleteCurrent);
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (QAction* action : list_->actions()) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setIconSize({20, 20});
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
    }
    row->addStretch();
    layout()->addItem(row);
}

QAction* CatalogueList::AddAction(const char* icon, const QString& text, const QKeySequence& key) {
    auto* action = new QAction(CatalogueIcon(icon), text, list_);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    list_->addAction(action);
    return action;
}

void CatalogueList::Refill() {
    refilling_ = true;
    list_->clear();
    for (const std::string& name : keeper_.Store().Names()) {
        auto* item = new QListWidgetItem(Utf8Text(name), list_);
        item->setData(kNameRole, item->text());
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        if (name == keeper_.Name()) list_->setCurrentItem(item);
    }
    refilling_ = false;
}

bool CatalogueList::MakeNew() {
    const std::string name = keeper_.Store().FreeName();
    if (const Outcome made = keeper_.Store().Create(name); !made) {
        Tell(made);
        return false;
    }
    Q_EMIT Chosen(Utf8Text(name));
    Refill();
    return keeper_.Name() == name;
}

void CatalogueList::RenameTo(QListWidgetItem* item) {
    const QString before = item->data(kNameRole).toString();
    const QString now = item->text();
    if (before == now) return;
    const bool open = before == Utf8Text(keeper_.Name());
    const Outcome renamed =
        open ? keeper_.Rename(now.toStdString())
             : keeper_.Store().Rename(before.toStdString(), now.trimmed().toStdString());
    Tell(renamed);
    // Not from inside the editing of the item that goes.
    QMetaObject::invokeMethod(this, &CatalogueList::Refill, Qt::QueuedConnection);
    if (renamed) Q_EMIT Changed();
}

void CatalogueList::DeleteCurrent() {
    const QListWidgetItem* item = list_->currentItem();
    if (!item) return;
    const QString name = item->data(kNameRole).toString();
    const QString question =
        tr("Delete the catalogue \"%1\"? The sound files themselves are kept.").arg(name);
    if (!prompts_.AskYesNo(question.toStdString(), "Sample File Database")) return;
    const bool open = name == Utf8Text(keeper_.Name());
    if (open) Q_EMIT Closed();
    const Outcome deleted = open ? keeper_.Delete() : keeper_.Store().Delete(name.toStdString());
    Refill();
    if (deleted) Q_EMIT Changed();
    Tell(deleted);
    if (open && list_->count() > 0 && !keeper_.IsOpen()) list_->setCurrentRow(0);
    if (open && keeper_.IsOpen()) Q_EMIT Chosen(Utf8Text(keeper_.Name()));
}

void CatalogueList::Tell(const Outcome& outcome) {
    if (!outcome) Q_EMIT Failed(Utf8Text(outcome.Reason()));
}

}  // namespace sonavel
