#include "app/look.h"

#include <QApplication>
#include <QFont>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOptionToolButton>
#include <algorithm>

#include "platform/qt/device_line.h"

namespace sonavel {

namespace {

struct PaletteColours {
    QRgb window, base, alternate, button, text, faint, accent, onAccent, toolTip;
};

constexpr PaletteColours kLight{0xfff1f2f4, 0xffffffff, 0xfff6f7f9, 0xfff7f8fa, 0xff20262e,
                                0xff8d949e, 0xff1f6fd0, 0xffffffff, 0xfffffbe6};
constexpr PaletteColours kDark{0xff2a2e34, 0xff1f2227, 0xff262a30, 0xff363b43, 0xffe6e9ee,
                               0xff7c838d, 0xff3d8be8, 0xffffffff, 0xff3c3a2c};

QPalette PaletteFrom(const PaletteColours& colours) {
    QPalette palette;
    palette.setColor(QPalette::Window, colours.window);
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::Button, colours.button);
    palette.setColor(QPalette::ToolTipBase, colours.toolTip);
    palette.setColor(QPalette::Highlight, colours.accent);
    palette.setColor(QPalette::HighlightedText, colours.onAccent);
    palette.setColor(QPalette::Link, colours.accent);
    palette.setColor(QPalette::PlaceholderText, colours.faint);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.faint);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.faint);
    return palette;
}

bool DesktopIsDark() {
    const QPalette own = QApplication::palette();
    return own.color(QPalette::Window).lightness() < own.color(QPalette::WindowText).lightness();
}

class ProgramStyle : public QProxyStyle {
  public:
    ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

    // The style's own is as high whatever text stands in it.
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        if (metric != PM_TitleBarHeight) return usual;
        const QFontMetrics text(QApplication::font("QMdiSubWindowTitleBar"));
        return std::max(usual, text.height() + kRoundTitle);
    }

    // The icons' active colours are those of a highlighted menu item; a button under the pointer is
    // not highlighted.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        if (element != CE_ToolButtonLabel || !button)
            return QProxyStyle::drawControl(element, option, painter, widget);
        QStyleOptionToolButton calm = *button;
        calm.state.setFlag(State_MouseOver, false);
        QProxyStyle::drawControl(element, &calm, painter, widget);
    }

    // Lists and pages of text show the keyboard at their frame, also while nothing is chosen in
    // them; buttons within theirs, where the default one looks the same with it and without.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (!option->state.testFlag(State_HasFocus)) return;
        if (element == PE_Frame) DrawFocus(*painter, *option, 0);
        if (element == PE_PanelButtonCommand && option->state.testFlag(State_KeyboardFocusChange))
            DrawFocus(*painter, *option, kFocusInset);
    }

  private:
    static constexpr int kFocusInset = 3;  // pixels within a button
    static constexpr int kRoundTitle = 6;  // above and below it together

    static void DrawFocus(QPainter& painter, const QStyleOption& option, int inset) {
        FillFrame(painter, option.rect.adjusted(inset, inset, -inset, -inset),
                  option.palette.color(QPalette::Highlight));
    }
};

// The desktop's face first; the Korean letters that it lacks come from the next that has them.
void SetFonts() {
    const QStringList korean{QStringLiteral("NanumGothic"), QStringLiteral("Noto Sans CJK KR")};
    // A face that texts ask for, and what stands in for it where it is not installed.
    QFont::insertSubstitutions(QStringLiteral("굴림"), korean);
    QFont font = QApplication::font();
    font.setFamilies(QStringList{QFontInfo(font).family()} + korean);
    QApplication::setFont(font);
}

}  // namespace

void ApplyLook() {
    const bool dark = DesktopIsDark();
    QApplication::setStyle(new ProgramStyle);
    QApplication::setPalette(PaletteFrom(dark ? kDark : kLight));
    SetFonts();
}

}  // namespace sonavel
