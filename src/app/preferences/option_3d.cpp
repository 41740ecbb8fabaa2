#include "app/preferences/option_3d.h"

#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <utility>

#include "platform/qt/qt_progress.h"

namespace sonavel {

COption3D::COption3D(QWidget* parent, EarsDescriber describe)
    : OptionPage(parent),
      describe_(std::move(describe)),
      table_(new QRadioButton(tr("&KEMAR, 1994"), this)),
      file_(new QRadioButton(tr("A SO&FA file:"), this)),
      path_(new QLineEdit(this)),
      state_(new QLabel(this)) {
    auto* group = new QGroupBox(tr("The listener's responses, for smooth sources"), this);
    auto* column = new QVBoxLayout(group);
    column->addWidget(table_);
    column->addWidget(file_);
    column->addLayout(MakeFileRow());
    column->addWidget(state_);
    state_->setWordWrap(true);
    path_->setReadOnly(true);
    path_->setAccessibleName(tr("SOFA file"));
    auto* page = new QVBoxLayout(this);
    page->addWidget(group);
    page->addStretch(1);
    connect(table_, &QRadioButton::toggled, this, &COption3D::TakeChoice);
}

QLayout* COption3D::MakeFileRow() {
    auto* row = new QHBoxLayout;
    auto* browse = new QPushButton(tr("&Browse…"), this);
    row->addWidget(path_, 1);
    row->addWidget(browse);
    connect(browse, &QPushButton::clicked, this, &COption3D::Browse);
    return row;
}

void COption3D::Browse() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Responses"), path_->text(),
                                                      tr("SOFA files (*.sofa);;All files (*)"));
    if (path.isEmpty()) return;
    Choose({true, path});
    TakeChoice();
}

void COption3D::Choose(const Choice& choice) {
    const QSignalBlocker quiet(table_);
    path_->setText(choice.path);
    (choice.own ? file_ : table_)->setChecked(true);
    path_->setEnabled(choice.own);
}

void COption3D::TakeChoice() {
    if (!ReadChosen()) Choose(before_);
    before_ = Chosen();
    path_->setEnabled(before_.own);
    Q_EMIT Edited();
}

// The window takes all input to itself, once it is there; until then none comes through.
bool COption3D::ReadChosen() {
    const Choice chosen = Chosen();
    const bool own = chosen.own && !chosen.path.isEmpty();
    isRead_ = true;
    state_->setText(own ? tr("Reading the responses…") : QString());
    QtProgress progress("Progress Responses", window());
    const auto said = describe_(own ? chosen.path.toStdString() : std::string(), progress);
    const bool cancelled = said.Ended().IsCancelled();
    state_->setText(cancelled ? tr("Reading was cancelled; the responses stay as they were.")
                              : QString::fromStdString(said ? *said : said.Reason()));
    return !cancelled;
}

void COption3D::ShowPreferences(const Preferences& preferences) {
    OptionPage::ShowPreferences(preferences);
    Choose({!preferences.ears.empty(), QString::fromStdString(preferences.ears)});
    before_ = Chosen();
}

void COption3D::showEvent(QShowEvent* event) {
    OptionPage::showEvent(event);
    const auto read = [this] {
        if (!isRead_) ReadChosen();
    };
    QMetaObject::invokeMethod(this, read, Qt::QueuedConnection);
}

void COption3D::TakeInto(Preferences& preferences) const {
    OptionPage::TakeInto(preferences);
    preferences.ears = file_->isChecked() ? path_->text().toStdString() : std::string();
}

}  // namespace sonavel
