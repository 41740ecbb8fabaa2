#include "view/ui/record_dialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>

#include "sound/sample_types.h"

namespace sonavel {

namespace {

constexpr int kRates[] = {6000,  8000,  11025, 12000, 16000, 22050,
                          24000, 32000, 44100, 48000, 60000};

void AddChoice(QButtonGroup& group, QBoxLayout& column, const QString& text, int id) {
    auto* button = new QRadioButton(text);
    group.addButton(button, id);
    column.addWidget(button);
}

}  // namespace

CRecordDlg::CRecordDlg(const RecordRequest& request, QWidget* parent)
    : FormDialog(tr("Record"), parent),
      request_(request),
      rate_(new QComboBox(this)),
      newWindow_(new QCheckBox(tr("&New Window"), this)),
      waiting_(new QCheckBox(tr("&Waiting"), this)),
      waitingLabel_(new QLabel(tr("Waiting Time(1/10 Sec ) :"), this)),
      waitingTenths_(new QSpinBox(this)) {
    AddFormat();
    AddTarget();
    PutInTabOrder();
    const bool hasDocument = request_.documentFormat.has_value();
    ShowFormat(hasDocument ? *request_.documentFormat : request_.initial.format);
    newWindow_->setChecked(!hasDocument);
    newWindow_->setEnabled(hasDocument);
    LockFormat(hasDocument);
    connect(newWindow_, &QCheckBox::toggled, this, &CRecordDlg::OnNewWindowToggled);
}

void CRecordDlg::AddFormat() {
    for (int rate : kRates) rate_->addItem(QString::number(rate));
    AddForm().addRow(tr("Sampling &Rate:"), rate_);
    auto* columns = new QHBoxLayout;
    auto* channels = new QVBoxLayout;
    AddChoice(channels_, *channels, tr("&Mono Channel"), 1);
    AddChoice(channels_, *channels, tr("&Stereo Channel"), 2);
    auto* bits = new QVBoxLayout;
    AddChoice(bits_, *bits, tr("&8 Bits Data"), 8);
    AddChoice(bits_, *bits, tr("&16 Bit Data"), 16);
    columns->addLayout(channels);
    columns->addSpacing(24);
    columns->addLayout(bits);
    Body().addLayout(columns);
}

void CRecordDlg::AddTarget() {
    Body().addSpacing(6);
    Body().addWidget(newWindow_);
    Body().addWidget(waiting_);
    waitingTenths_->setRange(0, kHighestWaitingTenths);
    waitingTenths_->setValue(request_.initial.waitingTenths);
    waitingTenths_->setAlignment(Qt::AlignRight);
    waitingTenths_->setAccessibleName(tr("Waiting time in tenths of a second"));
    waitingTenths_->setToolTip(tr("Tenths of a second until recording begins."));
    auto* row = new QHBoxLayout;
    row->addSpacing(24);
    row->addWidget(waitingLabel_);
    row->addWidget(waitingTenths_);
    Body().addLayout(row);
    const auto follow = [this](bool on) {
        waitingLabel_->setEnabled(on);
        waitingTenths_->setEnabled(on);
    };
    connect(waiting_, &QCheckBox::toggled, this, follow);
    Body().addSpacing(6);
    AddChoice(bits_, Body(), tr("32-bit &float"), FloatSample::kBits);
    waiting_->setChecked(request_.initial.waiting);
    follow(waiting_->isChecked());
}

void CRecordDlg::PutInTabOrder() {
    QList<QWidget*> order{rate_};
    QAbstractButton* const floats = bits_.button(FloatSample::kBits);
    for (const QButtonGroup* group : {&channels_, &bits_})
        for (QAbstractButton* button : group->buttons())
            if (button != floats) order.append(button);
    order << newWindow_ << waiting_ << waitingTenths_ << floats;
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void CRecordDlg::ShowFormat(const NewSoundChoice& format) {
    const QString rate = QString::number(format.samplesPerSecond);
    if (rate_->findText(rate) < 0) rate_->addItem(rate);
    rate_->setCurrentText(rate);
    if (QAbstractButton* button = channels_.button(static_cast<int>(format.channels)))
        button->setChecked(true);
    if (QAbstractButton* button = bits_.button(static_cast<int>(format.bits)))
        button->setChecked(true);
}

void CRecordDlg::LockFormat(bool locked) {
    rate_->setEnabled(!locked);
    for (const QButtonGroup* group : {&channels_, &bits_})
        for (QAbstractButton* button : group->buttons())
            button->setEnabled(!locked || button->isChecked());
}

void CRecordDlg::OnNewWindowToggled(bool on) {
    if (!request_.documentFormat) return;
    if (!on) ShowFormat(*request_.documentFormat);
    LockFormat(!on);
}

RecordChoice CRecordDlg::Choice() const {
    RecordChoice choice;
    choice.target = newWindow_->isChecked() ? RecordChoice::Target::kNewDocument
                                            : RecordChoice::Target::kActiveDocument;
    choice.format = {rate_->currentText().toUInt(), static_cast<unsigned>(channels_.checkedId()),
                     static_cast<unsigned>(bits_.checkedId())};
    choice.waiting = waiting_->isChecked();
    choice.waitingTenths = waitingTenths_->value();
    return choice;
}

}  // namespace sonavel
