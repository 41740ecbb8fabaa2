#include "view/ui/user_zoom_dialog.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>
#include <limits>

namespace sonavel {

namespace {

constexpr double kLongestSeconds = 2147483647.0;

int Number(UserZoom::Type type) {
    return static_cast<int>(type);
}

QString PercentText(double percent) {
    return QString::number(percent, 'f', 3) + QStringLiteral("%");
}

}  // namespace

UserZoomDialog::UserZoomDialog(const UserZoom& initial, QWidget* parent)
    : FormDialog(tr("User Defined Zoom"), parent),
      levelPercent_(MakePercentBox(initial.levelPercent)),
      timePercent_(MakePercentBox(initial.timePercent)),
      startSample_(MakeSampleBox(initial.startSample)),
      endSample_(MakeSampleBox(initial.endSample)),
      startSeconds_(MakeTimeBox(initial.startSeconds)),
      endSeconds_(MakeTimeBox(initial.endSeconds)) {
    auto* group = new QGroupBox(tr("Zoom Type"), this);
    auto* grid = new QGridLayout(group);
    grid->setHorizontalSpacing(12);
    const QString order = tr("Must lie after the start");
    AddSection(*grid, UserZoom::Type::kPercent,
               {tr("&Percent"),
                {tr("Zoom &Level(%)"), tr("&Zoom Time(%)")},
                {levelPercent_, timePercent_},
                tr("Must be above 0")});
    AddSection(*grid, UserZoom::Type::kSample,
               {tr("&Sample"),
                {tr("Start S&ample"), tr("&End Sample")},
                {startSample_, endSample_},
                order});
    AddSection(*grid, UserZoom::Type::kTime,
               {tr("&Time"),
                {tr("Sta&rt Time(Sec)"), tr("E&nd Time(Sec)")},
                {startSeconds_, endSeconds_},
                order});
    Body().addWidget(group);
    types_.button(Number(initial.type))->setChecked(true);
    connect(&types_, &QButtonGroup::idToggled, this, &UserZoomDialog::ShowState);
    ShowState();
    fieldsOf_[Number(initial.type)].front()->setFocus();
}

void UserZoomDialog::AddSection(QGridLayout& grid, UserZoom::Type type, const Section& section) {
    auto* radio = new QRadioButton(section.title, this);
    types_.addButton(radio, Number(type));
    const int row = grid.rowCount();
    grid.addWidget(radio, row, 0);
    for (int i = 0; i < 2; ++i) {
        auto* label = new QLabel(section.labels[i], this);
        label->setBuddy(section.fields[i]);
        grid.addWidget(label, row + i, 1);
        grid.addWidget(section.fields[i], row + i, 2);
        fieldsOf_[Number(type)].insert(fieldsOf_[Number(type)].end(), {section.fields[i], label});
    }
    setTabOrder(radio, section.fields[0]);
    setTabOrder(section.fields[0], section.fields[1]);
    hints_[Number(type)] = new FieldHint(section.hint, this);
    grid.addWidget(hints_[Number(type)], row + 1, 3);
}

QComboBox* UserZoomDialog::MakePercentBox(double percent) {
    auto* box = new QComboBox(this);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    // Completing would write over what is typed, and keep the first Enter for itself.
    box->setCompleter(nullptr);
    for (int value : {10, 25, 50, 75, 100, 150, 200, 400, 800, 1600})
        box->addItem(QString::number(value) + QStringLiteral("%"));
    box->setEditText(PercentText(percent));
    box->lineEdit()->selectAll();
    connect(box, &QComboBox::editTextChanged, this, &UserZoomDialog::ShowState);
    return box;
}

QSpinBox* UserZoomDialog::MakeSampleBox(std::int64_t sample) {
    constexpr std::int64_t kHighest = std::numeric_limits<int>::max();
    auto* box = new QSpinBox(this);
    box->setRange(0, static_cast<int>(kHighest));
    box->setValue(static_cast<int>(std::clamp<std::int64_t>(sample, 0, kHighest)));
    box->setAlignment(Qt::AlignRight);
    connect(box, &QSpinBox::valueChanged, this, &UserZoomDialog::ShowState);
    return box;
}

QDoubleSpinBox* UserZoomDialog::MakeTimeBox(double seconds) {
    auto* box = new QDoubleSpinBox(this);
    box->setDecimals(3);
    box->setSingleStep(0.1);
    box->setRange(0, kLongestSeconds);
    box->setValue(seconds);
    box->setAlignment(Qt::AlignRight);
    connect(box, &QDoubleSpinBox::valueChanged, this, &UserZoomDialog::ShowState);
    return box;
}

UserZoom::Type UserZoomDialog::Type() const {
    return static_cast<UserZoom::Type>(types_.checkedId());
}

bool UserZoomDialog::IsValid(UserZoom::Type type) const {
    switch (type) {
        case UserZoom::Type::kPercent:
            return PercentFromText(levelPercent_->currentText().toStdString()) > 0 &&
                   PercentFromText(timePercent_->currentText().toStdString()) > 0;
        case UserZoom::Type::kSample:
            return endSample_->value() > startSample_->value();
        case UserZoom::Type::kTime:
            return endSeconds_->value() > startSeconds_->value();
    }
    return false;
}

void UserZoomDialog::ShowState() {
    if (types_.checkedId() < 0) return;
    const UserZoom::Type chosen = Type();
    for (UserZoom::Type type :
         {UserZoom::Type::kPercent, UserZoom::Type::kSample, UserZoom::Type::kTime}) {
        for (QWidget* field : fieldsOf_[Number(type)]) field->setEnabled(type == chosen);
        hints_[Number(type)]->SetShown(type == chosen && !IsValid(type));
    }
    SetOkEnabled(IsValid(chosen));
}

UserZoom UserZoomDialog::Choice() const {
    UserZoom zoom;
    zoom.type = Type();
    zoom.levelPercent = PercentFromText(levelPercent_->currentText().toStdString());
    zoom.timePercent = PercentFromText(timePercent_->currentText().toStdString());
    zoom.startSample = startSample_->value();
    zoom.endSample = endSample_->value();
    zoom.startSeconds = startSeconds_->value();
    zoom.endSeconds = endSeconds_->value();
    return zoom;
}

}  // namespace sonavel
