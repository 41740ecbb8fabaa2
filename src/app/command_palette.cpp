#include "app/command_palette.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "platform/command_search.h"
#include "platform/qt/spoken_message.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr QSize kPaletteSize{560, 420};

QString PlainText(const QString& text) {
    QString plain = text.section(QLatin1Char('\t'), 0, 0);
    return plain.remove(QLatin1Char('&'));
}

int IdOf(const QAction* action, const CommandActions& actions) {
    for (const auto& [id, known] : actions.All())
        if (known == action) return id;
    return 0;
}

class RowCollector {
  public:
    explicit RowCollector(const CommandActions& actions) : actions_(actions) {}

    void AddMenu(const QMenu& menu, const QString& place) {
        for (const QAction* action : menu.actions()) {
            const QString name = place + PlainText(action->text());
            if (const QMenu* inner = action->menu())
                AddMenu(*inner, name + QStringLiteral(" > "));
            else if (const int id = IdOf(action, actions_); id != 0 && seen_.insert(id).second)
                rows_.push_back(RowOf(id, *action, name));
        }
    }
    std::vector<PaletteRow> Take() { return std::move(rows_); }

  private:
    PaletteRow RowOf(int id, const QAction& action, const QString& name) const {
        QString key = action.shortcut().toString(QKeySequence::NativeText);
        if (key.isEmpty()) key = action.text().section(QLatin1Char('\t'), 1, 1);
        return {id, name, key, Utf8Text(actions_.Offered(id).Reason())};
    }

    const CommandActions& actions_;
    std::set<int> seen_;
    std::vector<PaletteRow> rows_;
};

}  // namespace

std::vector<PaletteRow> PaletteRows(const QList<QMenu*>& menus, const CommandActions& actions) {
    RowCollector collector(actions);
    for (const QMenu* menu : menus)
        collector.AddMenu(*menu, PlainText(menu->title()) + QStringLiteral(" > "));
    return collector.Take();
}

CommandPalette::CommandPalette(std::vector<PaletteRow> rows, QWidget* parent)
    : QDialog(parent),
      rows_(std::move(rows)),
      typed_(new QLineEdit(this)),
      list_(new QListWidget(this)),
      refusal_(new QLabel(this)) {
    setWindowTitle(tr("Find Command"));
    typed_->setPlaceholderText(tr("A few letters of a command"));
    typed_->setAccessibleName(tr("A few letters of a command"));
    list_->setAccessibleName(tr("Commands"));
    list_->setFocusPolicy(Qt::NoFocus);
    refusal_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(typed_);
    column->addWidget(list_, 1);
    column->addWidget(refusal_);
    resize(kPaletteSize);
    typed_->installEventFilter(this);
    connect(typed_, &QLineEdit::textChanged, this, &CommandPalette::Find);
    connect(typed_, &QLineEdit::returnPressed, this, &CommandPalette::Choose);
    connect(list_, &QListWidget::itemClicked, this, &CommandPalette::Choose);
    connect(list_, &QListWidget::currentRowChanged, this, &CommandPalette::ShowRefusal);
    Find({});
}

void CommandPalette::Find(const QString& typed) {
    struct Fit {
        int cost;
        std::size_t row;
    };
    std::vector<Fit> fits;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::string name = rows_[i].name.section(QStringLiteral(" > "), 1).toStdString();
        if (const auto cost = CommandFit(typed.toStdString(), name)) fits.push_back({*cost, i});
    }
    std::ranges::stable_sort(fits, {}, &Fit::cost);
    // What is chosen on the way is not worth telling.
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const Fit& fit : fits) {
        const PaletteRow& row = rows_[fit.row];
        auto* item = new QListWidgetItem(
            row.key.isEmpty() ? row.name : row.name + QStringLiteral("   ") + row.key, list_);
        item->setData(Qt::UserRole, static_cast<int>(fit.row));
        if (!row.refusal.isEmpty()) item->setForeground(palette().placeholderText());
    }
    list_->setCurrentRow(0);
    ShowRefusal();
}

const PaletteRow* CommandPalette::Current() const {
    const QListWidgetItem* item = list_->currentItem();
    return item ? &rows_[static_cast<std::size_t>(item->data(Qt::UserRole).toInt())] : nullptr;
}

void CommandPalette::ShowRefusal() {
    const PaletteRow* row = Current();
    refusal_->setText(row ? row->refusal : tr("No command has these letters."));
    // The line keeps the keyboard, so that readers hear of the row through its description.
    QStringList spoken{row ? row->name : QString(), row ? row->key : QString(), refusal_->text()};
    spoken.removeAll(QString());
    typed_->setAccessibleDescription(spoken.join(QStringLiteral(", ")));
    SayOf(*typed_, typed_->accessibleDescription());
}

void CommandPalette::Choose() {
    const PaletteRow* row = Current();
    if (!row || !row->refusal.isEmpty()) return;
    chosen_ = row->id;
    accept();
}

bool CommandPalette::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
        if (step != 0 && list_->count() > 0) {
            list_->setCurrentRow(std::clamp(list_->currentRow() + step, 0, list_->count() - 1));
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

}  // namespace sonavel
