#include "platform/qt/message_box.h"

#include <QAbstractButton>
#include <QPainter>

#include "platform/english_meanings.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

struct ButtonText {
    QMessageBox::StandardButton button;
    const char* text;
};

// In the order in which one of them becomes the default.
constexpr ButtonText kButtonTexts[] = {
    {QMessageBox::Ok, "&OK"}, {QMessageBox::Yes, "&Yes"},         {QMessageBox::Save, "&Save"},
    {QMessageBox::No, "&No"}, {QMessageBox::Discard, "&Discard"}, {QMessageBox::Cancel, "&Cancel"},
};

constexpr int kIconSize = 40;
constexpr QRgb kQuestionColour = 0xff1a6fd6;
constexpr QRgb kWarningColour = 0xffd08000;

// A disc with a "?" or a "!", in the style of the program's other icons.
QPixmap IconPicture(QMessageBox::Icon icon, double pixelRatio) {
    const bool question = icon == QMessageBox::Question;
    QPixmap picture(QSize(kIconSize, kIconSize) * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(question ? kQuestionColour : kWarningColour));
    const QRect disc(0, 0, kIconSize, kIconSize);
    painter.drawEllipse(disc);
    QFont font;
    font.setPixelSize(kIconSize * 2 / 3);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(disc, Qt::AlignCenter, question ? QStringLiteral("?") : QStringLiteral("!"));
    return picture;
}

}  // namespace

MessageBox::MessageBox(const MessageBoxTexts& texts, QWidget* parent)
    : QMessageBox(texts.icon, texts.caption.isEmpty() ? QStringLiteral("Sonavel") : texts.caption,
                  texts.text, texts.buttons, parent) {
    const std::string_view meaning = EnglishMeaning(texts.text.toStdString());
    if (!meaning.empty()) setInformativeText(Utf8Text(meaning));
    setIconPixmap(IconPicture(texts.icon, devicePixelRatioF()));
    for (const ButtonText& entry : kButtonTexts) {
        QAbstractButton* shown = button(entry.button);
        if (!shown) continue;
        shown->setText(tr(entry.text));
        if (!defaultButton()) setDefaultButton(entry.button);
    }
}

}  // namespace sonavel
