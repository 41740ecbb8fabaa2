// What the window of the sample file database is made of.
#include <QHBoxLayout>
#include <QToolButton>

#include "catalogue/ui/catalogue_icons.h"
#include "catalogue/ui/catalogue_window.h"
#include "platform/qt/tab_order.h"

namespace sonavel {

namespace {

constexpr int kIconSize = 20;

}  // namespace

QAction* CatalogueWindow::AddAction(const char* icon, const QString& text, const QString& hint,
                                    const QKeySequence& key, void (CatalogueWindow::*run)()) {
    auto* action = new QAction(CatalogueIcon(icon), text, this);
    action->setShortcut(key);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(hint, key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, run);
    buttons_.push_back(action);
    return action;
}

void CatalogueWindow::MakeActions() {
    using Window = CatalogueWindow;
    AddAction("add-files", tr("Add Files"), tr("Add sound files"), QKeySequence(tr("Ctrl+I")),
              &Window::AddFiles);
    AddAction("add-folder", tr("Add Folder"), tr("Add a folder with all sounds below it"),
              QKeySequence(tr("Ctrl+Shift+I")), &Window::AddFolder);
    remove_ = AddAction("delete", tr("Remove"), tr("Take the sounds off the catalogue"),
                        QKeySequence::Delete, &Window::RemoveSelected);
    play_ = AddAction("play", tr("Play"), tr("Play the sound, or stop it"), Qt::Key_Space,
                      &Window::PlayOrStop);
    open_ = AddAction("open", tr("Open"), tr("Open the sounds in the editor"), Qt::Key_Return,
                      &Window::OpenSelected);
    showFolder_ = AddAction("show-folder", tr("Show Folder"), tr("Show the folder of the sound"),
                            QKeySequence(tr("Ctrl+D")), &Window::ShowFolder);
    locate_ = AddAction("locate", tr("Locate"), tr("Find a missing file where it is now"),
                        QKeySequence(tr("Ctrl+L")), &Window::Locate);
    check_ = AddAction("check", tr("Check"), tr("Look at all files again"), Qt::Key_F5,
                       &Window::CheckAgain);
    AddAction("fields", tr("Fields"), tr("Name the fields of your own"), QKeySequence(tr("Ctrl+E")),
              &Window::EditFields);
}

QLayout* CatalogueWindow::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (QAction* action : buttons_) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setIconSize({kIconSize, kIconSize});
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setMinimumWidth(fontMetrics().horizontalAdvance(tr("Show Folder")) * 3 / 4);
        row->addWidget(button);
    }
    row->addStretch();
    return row;
}

void CatalogueWindow::MakeTable() {
    table_ = new CatalogueTableView(model_, this);
    for (QAction* action : {remove_, play_, open_}) action->setShortcutContext(Qt::WidgetShortcut);
    table_->addActions({play_, open_, showFolder_, locate_, remove_});
    connect(table_, &CatalogueTableView::OpenRequested, this, &CatalogueWindow::OpenSelected);
    connect(table_, &CatalogueTableView::SelectionChanged, this, &CatalogueWindow::UpdateActions);
    connect(table_, &CatalogueTableView::RowChosen, this, &CatalogueWindow::PlayAsChosen);
}

void CatalogueWindow::MakeFilter() {
    filter_ = new CatalogueFilter(buttons_, this);
    connect(filter_, &CatalogueFilter::TextChanged, this, [this](const QString& text) {
        model_.SetFilter(text);
        UpdateCounts();
    });
    connect(filter_, &CatalogueFilter::ShownChanged, this, [this] {
        model_.SetShown(filter_->Shown());
        UpdateCounts();
    });
    connect(filter_, &CatalogueFilter::LeftDownwards, this, [this] {
        table_->setFocus();
        if (!table_->selectionModel()->hasSelection()) table_->selectRow(0);
    });
}

void CatalogueWindow::Build() {
    list_ = new CatalogueList(keeper_, services_.prompts, this);
    auto* right = new QWidget(this);
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    MakeTable();
    column->addLayout(MakeButtons());
    MakeFilter();
    column->addWidget(filter_);
    column->addWidget(table_, 1);
    splitter_ = new QSplitter(this);
    splitter_->addWidget(list_);
    splitter_->addWidget(right);
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({180, 940});
    splitter_->setChildrenCollapsible(false);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(splitter_, 1);
    status_ = new CatalogueStatus(this);
    whole->addWidget(status_);
    TabAsLaidOut(*this);
}

}  // namespace sonavel
