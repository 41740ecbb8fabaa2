// What the window of the sample file database is made of.
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QShortcut>
#include <QToolButton>
#include <algorithm>

#include "catalogue/catalogue_columns.h"
#include "catalogue/ui/catalogue_icons.h"
#include "catalogue/ui/catalogue_window.h"

namespace sonavel {

namespace {

constexpr int kFixedWidths[kFixedColumns] = {200, 100, 78, 56, 72, 72, 150};
constexpr int kFieldWidth = 100;
constexpr int kIconSize = 20;
constexpr int kRowPadding = 8;

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

QLayout* CatalogueWindow::MakeFilterRow() {
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("filter"));
    filter_->setPlaceholderText(tr("Filter all columns (Ctrl+F)"));
    filter_->setClearButtonEnabled(true);
    filter_->addAction(CatalogueIcon("search"), QLineEdit::LeadingPosition);
    new WindowKeysFirst(buttons_, filter_);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        model_.SetFilter(text);
        UpdateCounts();
    });
    missingOnly_ = new QCheckBox(tr("&Missing only"), this);
    missingOnly_->setObjectName(QStringLiteral("missingOnly"));
    connect(missingOnly_, &QCheckBox::toggled, this, [this](bool on) {
        model_.SetShown(on ? RowsShown::kMissing : RowsShown::kAll);
        UpdateCounts();
    });
    const auto focusFilter = [this] {
        filter_->setFocus();
        filter_->selectAll();
    };
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, focusFilter);
    auto* down = new QShortcut(Qt::Key_Down, filter_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, this, [this] {
        table_->setFocus();
        if (!table_->selectionModel()->hasSelection()) table_->selectRow(0);
    });
    auto* clear = new QShortcut(Qt::Key_Escape, filter_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(clear, &QShortcut::activated, filter_, &QLineEdit::clear);
    auto* row = new QHBoxLayout;
    row->addWidget(filter_);
    row->addWidget(missingOnly_);
    return row;
}

QLayout* CatalogueWindow::MakeStatusRow() {
    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("counts"));
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("note"));
    note_->setTextFormat(Qt::PlainText);
    note_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A long message is cut off; it does not widen the window.
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout;
    row->addWidget(counts_);
    row->addWidget(note_, 1);
    return row;
}

void CatalogueWindow::SetUpTable() {
    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("sounds"));
    table_->setModel(&model_);
    table_->setSelectionBehavior(QTableView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->setDragDropMode(QTableView::DragOnly);
    table_->setEditTriggers(QTableView::EditKeyPressed | QTableView::DoubleClicked);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    table_->horizontalHeader()->setSectionsMovable(true);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->sortByColumn(0, Qt::AscendingOrder);
    table_->setSortingEnabled(true);
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (QAction* action : {remove_, play_, open_}) action->setShortcutContext(Qt::WidgetShortcut);
    table_->addActions({play_, open_, showFolder_, locate_, remove_});
    connect(table_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!(index.flags() & Qt::ItemIsEditable)) OpenSelected();
    });
}

void CatalogueWindow::SetColumnWidths() {
    for (int column = 0; column < model_.columnCount(); ++column) {
        const auto index = static_cast<std::size_t>(column);
        if (table_->columnWidth(column) == table_->horizontalHeader()->defaultSectionSize())
            table_->setColumnWidth(column,
                                   index < kFixedColumns ? kFixedWidths[index] : kFieldWidth);
    }
}

void CatalogueWindow::Build() {
    list_ = new CatalogueList(keeper_, services_.prompts, this);
    auto* right = new QWidget(this);
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    SetUpTable();
    column->addLayout(MakeButtons());
    column->addLayout(MakeFilterRow());
    column->addWidget(table_, 1);
    splitter_ = new QSplitter(this);
    splitter_->addWidget(list_);
    splitter_->addWidget(right);
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({180, 940});
    splitter_->setChildrenCollapsible(false);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(splitter_, 1);
    whole->addLayout(MakeStatusRow());
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CatalogueWindow::UpdateActions);
    connect(table_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CatalogueWindow::UpdateActions);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &CatalogueWindow::PlayAsChosen);
}

}  // namespace sonavel
