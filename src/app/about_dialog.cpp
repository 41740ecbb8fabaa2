#include "app/about_dialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>

#include "app/logo_picture.h"
#include "app/system_texts.h"

namespace sonavel {

namespace {

constexpr int kTextPixels = 11;

QFont TextFont() {
    QFont font(QStringLiteral("굴림"));
    font.setPixelSize(kTextPixels);
    font.setWeight(QFont::Normal);
    return font;
}

class WaitCursor {
  public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

QFrame* Line(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

}  // namespace

AboutDialog::AboutDialog(const std::function<void()>& runLogo,
                         const std::function<void()>& showLicences, QWidget* parent)
    : QDialog(parent) {
    const WaitCursor wait;
    setWindowTitle(tr("About Sonavel"));
    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setHorizontalSpacing(16);
    auto* picture = new QLabel(this);
    picture->setPixmap(LogoPicture(kLogoPictures - 1, kAboutPictureSize, devicePixelRatioF()));
    picture->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    grid->addWidget(picture, 0, 0, 4, 1);
    AddNames(*grid);
    AddMachine(*grid);
    AddNotice(*grid);
    AddButtons(*grid, runLogo, showLicences);
}

QLabel* AboutDialog::TextLabel(const QString& text) {
    auto* label = new QLabel(text, this);
    label->setFont(TextFont());
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void AboutDialog::AddNames(QGridLayout& grid) {
    grid.addWidget(TextLabel(QStringLiteral("Sonavel")), 0, 1, Qt::AlignBottom);
    grid.addWidget(TextLabel(QStringLiteral("Version 1.2 Beta")), 1, 1);
    grid.addWidget(TextLabel(QStringLiteral("Made by the Sonavel authors")), 2, 1);
    grid.setRowStretch(0, 1);
    grid.setRowStretch(3, 1);
}

void AboutDialog::AddMachine(QGridLayout& grid) {
    grid.addWidget(Line(this), 4, 0, 1, 2);
    const QString captions[] = {QStringLiteral("Phsycal Memory"),
                                QStringLiteral("Available Disk Space")};
    const std::string values[] = {PhysicalMemoryText(), DiskSpaceText()};
    for (int row = 0; row < 2; ++row) {
        grid.addWidget(TextLabel(captions[row]), 5 + row, 0);
        grid.addWidget(TextLabel(QString::fromStdString(values[row])), 5 + row, 1);
    }
}

void AboutDialog::AddNotice(QGridLayout& grid) {
    grid.addWidget(Line(this), 7, 0, 1, 2);
    auto* notice = new QLabel(
        tr("Warning: sounds may be protected by copyright. Copy, change or pass on only what is "
           "yours or what its owner lets you use. This program is free software under the MIT "
           "licence and comes without any warranty.\n\n"
           "The head-related responses of the 3D sound were measured on a KEMAR dummy head by "
           "W. G. Gardner and K. D. Martin, MIT Media Lab, 1994."),
        this);
    notice->setWordWrap(true);
    notice->setMinimumWidth(kAboutPictureSize.width() + 200);
    grid.addWidget(notice, 8, 0, 1, 2);
}

void AboutDialog::AddButtons(QGridLayout& grid, const std::function<void()>& runLogo,
                             const std::function<void()>& showLicences) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    QPushButton* logo = buttons->addButton(tr("&Logo"), QDialogButtonBox::ActionRole);
    logo->setAutoDefault(false);
    connect(logo, &QPushButton::clicked, this, [runLogo] { runLogo(); });
    QPushButton* licences = buttons->addButton(tr("L&icences"), QDialogButtonBox::ActionRole);
    licences->setAutoDefault(false);
    connect(licences, &QPushButton::clicked, this, [showLicences] { showLicences(); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    grid.addWidget(buttons, 9, 0, 1, 2);
}

}  // namespace sonavel
