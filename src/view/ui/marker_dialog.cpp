#include "view/ui/marker_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QShortcut>
#include <algorithm>
#include <set>

#include "platform/code_page_949.h"
#include "sound/sound_texts.h"
#include "sound/time_text.h"
#include "view/ui/typed_cells.h"

namespace sonavel {

namespace {

enum Column { kNumber, kLabel, kPosition, kLength, kColumnCount };

// Where an id stands twice, edits go to the first of them, so the order is left alone.
void SortByPlace(MarkerList& markers) {
    std::set<std::uint32_t> ids;
    for (const Marker& marker : markers.All()) ids.insert(marker.id);
    if (ids.size() == markers.Count())
        std::ranges::stable_sort(markers.All(), {}, &Marker::position);
}

QString NameShown(const Marker& marker) {
    return QString::fromStdString(DisplayText(marker.name));
}

}  // namespace

MarkerDialog::MarkerDialog(const MarkerDialogRequest& request, QWidget* parent)
    : FormDialog(tr("Marker"), parent),
      request_(request),
      markers_(request.markers),
      list_(new QTreeWidget(this)),
      noPlace_(new FieldHint(tr("This is no place in the sound; 1:02:03.5, 62.5s, 441000# and +5 "
                                "are."),
                             this)),
      label_(new QLineEdit(this)),
      position_(new FrameTimeField(request.frameCount, request.samplesPerSecond, this)),
      length_(new FrameTimeField(request.frameCount, request.samplesPerSecond, this)),
      edit_(new QPushButton(tr("&Edit"), this)),
      delete_(new QPushButton(tr("&Delete"), this)) {
    SetSizing(Sizing::kFree);
    MakeList();
    MakeFields();
    Begin();
}

void MarkerDialog::MakeList() {
    list_->setColumnCount(kColumnCount);
    list_->setHeaderLabels({tr("Number"), tr("Label"), tr("Position"), tr("Length")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setMinimumSize(620, 200);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list_->header()->setSectionResizeMode(kLabel, QHeaderView::Stretch);
    list_->setAccessibleName(tr("Markers"));
    connect(list_, &QTreeWidget::currentItemChanged, this, &MarkerDialog::OnCurrentChanged);
    auto* row = new QHBoxLayout;
    row->addWidget(list_, 1);
    row->addLayout(MakeButtons());
    Body().addLayout(row, 1);
    Body().addWidget(noPlace_);
    MakeTypable();
}

void MarkerDialog::MakeTypable() {
    auto* cells = new TypedCells(kLabel, kLength, this);
    list_->setItemDelegate(cells);
    list_->setEditTriggers(QAbstractItemView::DoubleClicked);
    // Behind the end of the typing, since the list is filled anew.
    connect(cells, &TypedCells::Typed, this, &MarkerDialog::TakeTyped, Qt::QueuedConnection);
    auto* renameKey = new QShortcut(QKeySequence(Qt::Key_F2), list_);
    renameKey->setContext(Qt::WidgetShortcut);
    connect(renameKey, &QShortcut::activated, this, [this] {
        if (QTreeWidgetItem* item = list_->currentItem()) list_->editItem(item, kLabel);
    });
}

QLayout* MarkerDialog::MakeButtons() {
    auto* column = new QVBoxLayout;
    auto* add = new QPushButton(tr("&Add"), this);
    for (QPushButton* button : {add, edit_, delete_}) {
        button->setAutoDefault(false);
        column->addWidget(button);
    }
    // Beside the list they come before the fields.
    setTabOrder(list_, add);
    setTabOrder(add, edit_);
    setTabOrder(edit_, delete_);
    setTabOrder(delete_, label_);
    column->addStretch(1);
    connect(add, &QPushButton::clicked, this, &MarkerDialog::AddMarker);
    connect(edit_, &QPushButton::clicked, this, &MarkerDialog::EditMarker);
    connect(delete_, &QPushButton::clicked, this, &MarkerDialog::RemoveMarker);
    auto* deleteKey = new QShortcut(QKeySequence::Delete, list_);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &MarkerDialog::RemoveMarker);
    return column;
}

void MarkerDialog::MakeFields() {
    QFormLayout& form = AddForm();
    form.addRow(tr("&Label:"), label_);
    form.addRow(tr("&Position:"), position_);
    form.addRow(tr("Len&gth:"), length_);
    connect(label_, &QLineEdit::textEdited, this, &MarkerDialog::OnFieldEdited);
    connect(position_, &FrameTimeField::Edited, this, &MarkerDialog::OnFieldEdited);
    connect(length_, &FrameTimeField::Edited, this, &MarkerDialog::OnFieldEdited);
}

void MarkerDialog::Begin() {
    const bool adding = request_.start == MarkerDialogRequest::Start::kAdd;
    ShowList(adding ? 0 : request_.markerId);
    if (adding || !Current()) LoadFields({}, request_.newPosition, request_.newLength);
    // The dialog opened to add a marker adds it on OK even when the proposal is taken as it stands.
    fieldsChanged_ = adding;
    if (request_.start == MarkerDialogRequest::Start::kList) {
        list_->setFocus();
    } else {
        label_->setFocus();
        label_->selectAll();
    }
}

void MarkerDialog::ShowList(std::uint32_t currentId) {
    list_->clear();
    SortByPlace(markers_);
    for (const Marker& marker : markers_.All()) AddRow(marker);
    for (int row = 0; currentId != 0 && row < list_->topLevelItemCount(); ++row) {
        if (markers_.All()[static_cast<std::size_t>(row)].id != currentId) continue;
        list_->setCurrentItem(list_->topLevelItem(row));
        break;
    }
    label_->setPlaceholderText(tr("Marker %1").arg(markers_.Count() + 1));
    OnCurrentChanged();
}

void MarkerDialog::AddRow(const Marker& marker) {
    auto* row = new QTreeWidgetItem(list_);
    row->setFlags(row->flags() | Qt::ItemIsEditable);
    row->setText(kNumber, QString::number(marker.id));
    row->setText(kLabel, NameShown(marker));
    row->setText(kPosition, PlaceText(marker.position));
    row->setText(kLength, marker.length ? PlaceText(marker.length) : QString());
    // Times alone are typed into; the frames before them are for reading.
    for (const int column : {kPosition, kLength})
        row->setData(column, TypedCells::kTextToType, row->text(column).section(u' ', -1));
    for (int column : {kNumber, kPosition, kLength})
        row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

QString MarkerDialog::PlaceText(std::uint32_t frames) const {
    const double seconds = double(frames) / std::max(1u, request_.samplesPerSecond);
    return QStringLiteral("%1   %2").arg(frames).arg(QString::fromStdString(TimeText(seconds)));
}

void MarkerDialog::OnCurrentChanged() {
    const Marker* marker = Current();
    edit_->setEnabled(marker);
    delete_->setEnabled(marker);
    if (marker) LoadFields(NameShown(*marker), marker->position, marker->length);
}

void MarkerDialog::LoadFields(const QString& name, std::uint32_t position, std::uint32_t length) {
    label_->setText(name);
    position_->SetFrame(position);
    length_->SetFrame(length);
    fieldsChanged_ = false;
}

const Marker* MarkerDialog::Current() const {
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    return row < 0 ? nullptr : &markers_.All()[static_cast<std::size_t>(row)];
}

MarkerEdit MarkerDialog::FromFields(MarkerEdit::Kind kind) const {
    return {kind, 0, position_->Frame(), label_->text().toStdString(), length_->Frame()};
}

void MarkerDialog::AddMarker() {
    const MarkerEdit edit = FromFields(MarkerEdit::Kind::kAdd);
    const std::uint32_t id = markers_.Add(edit.position, edit.name, edit.length);
    edits_.push_back(edit);
    ShowList(id);
}

void MarkerDialog::EditMarker() {
    const Marker* marker = Current();
    if (!marker) return;
    MarkerEdit edit = FromFields(MarkerEdit::Kind::kSet);
    edit.id = marker->id;
    // A name that was not touched keeps its bytes, in whatever encoding the file had them.
    if (label_->text() == NameShown(*marker)) edit.name.clear();
    Change(edit);
}

void MarkerDialog::Change(MarkerEdit edit) {
    markers_.Set(edit.id, edit.position, edit.name, edit.length);
    const std::uint32_t id = edit.id;
    edits_.push_back(std::move(edit));
    ShowList(id);
}

std::optional<std::uint32_t> MarkerDialog::FrameOfTyped(const QString& text, std::uint32_t here) {
    const auto time =
        ParseTime(text.toStdString(), request_.samplesPerSecond, BareNumber::kSeconds);
    const std::int64_t from = time && time->from == TimeFrom::kHere ? here : 0;
    const bool fits = time && from + time->frames >= 0 &&
                      from + time->frames <= std::int64_t{request_.frameCount};
    noPlace_->SetShown(!fits);
    if (!fits) return std::nullopt;
    return static_cast<std::uint32_t>(from + time->frames);
}

void MarkerDialog::TakeTyped(int row, int column, const QString& text) {
    if (row < 0 || static_cast<std::size_t>(row) >= markers_.Count()) return;
    const Marker& marker = markers_.All()[static_cast<std::size_t>(row)];
    MarkerEdit edit = {MarkerEdit::Kind::kSet, marker.id, marker.position, {}, marker.length};
    if (column == kLabel) {
        edit.name = text.toStdString();
    } else {
        std::uint32_t& place = column == kPosition ? edit.position : edit.length;
        const auto typed = FrameOfTyped(text, place);
        if (!typed) return;
        place = *typed;
    }
    Change(std::move(edit));
}

void MarkerDialog::RemoveMarker() {
    const Marker* marker = Current();
    if (!marker) return;
    const std::uint32_t id = marker->id;
    markers_.Remove(id);
    edits_.push_back({MarkerEdit::Kind::kDelete, id, 0, {}, 0});
    ShowList(0);
    LoadFields({}, request_.newPosition, request_.newLength);
}

void MarkerDialog::OnFieldEdited() {
    fieldsChanged_ = true;
}

void MarkerDialog::accept() {
    if (fieldsChanged_) Current() ? EditMarker() : AddMarker();
    FormDialog::accept();
}

}  // namespace sonavel
