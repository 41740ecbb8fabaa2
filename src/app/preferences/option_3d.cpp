#include "app/preferences/option_3d.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "app/own_ears.h"

namespace sonavel {

COption3D::COption3D(QWidget* parent)
    : OptionPage(parent),
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
    connect(table_, &QRadioButton::toggled, this, [this] {
        ShowState();
        Q_EMIT Edited();
    });
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
    path_->setText(path);
    file_->setChecked(true);
    ShowState();
    Q_EMIT Edited();
}

void COption3D::ShowState() {
    path_->setEnabled(file_->isChecked());
    const bool own = file_->isChecked() && !path_->text().isEmpty();
    state_->setText(own ? tr("Reading the responses…") : QString());
    // Shown while they are read; nothing else happens meanwhile.
    const auto poll = [] {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return false;
    };
    state_->setText(
        QString::fromStdString(DescribeEars(own ? path_->text().toStdString() : "", poll)));
}

void COption3D::ShowPreferences(const Preferences& preferences) {
    OptionPage::ShowPreferences(preferences);
    path_->setText(QString::fromStdString(preferences.ears));
    (preferences.ears.empty() ? table_ : file_)->setChecked(true);
    ShowState();
}

void COption3D::TakeInto(Preferences& preferences) const {
    OptionPage::TakeInto(preferences);
    preferences.ears = file_->isChecked() ? path_->text().toStdString() : std::string();
}

}  // namespace sonavel
