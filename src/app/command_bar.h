// A tool bar of commands, the transport bar with its time read-out, and the zoom bar with its
// ratio.
#pragma once

#include <QLabel>
#include <QToolBar>
#include <span>

#include "view/ui/command_menu.h"

namespace sonavel {

// A gap between the buttons of a bar.
inline constexpr int kBarGap = 0;

class CommandBar : public QToolBar {
    Q_OBJECT

  public:
    // The name is that of the View menu and, without blanks, the key under which the bar's place is
    // kept. Commands without an action are left out.
    CommandBar(const QString& name, const CommandActions& actions, std::span<const int> commandIds,
               QWidget* parent = nullptr);
};

// The bar "Remocon".
class TransportBar : public CommandBar {
    Q_OBJECT

  public:
    explicit TransportBar(const CommandActions& actions, QWidget* parent = nullptr);

    // The place of the cursor, or of what is being played or recorded, in the status format.
    void ShowTime(const QString& text);

  private:
    QLabel* readOut_;
};

// The bar "Zoom".
class ZoomBar : public CommandBar {
    Q_OBJECT

  public:
    explicit ZoomBar(const CommandActions& actions, QWidget* parent = nullptr);

    // Of the time zoom, "1 : 64"; empty without a sound.
    void ShowRatio(const QString& text);

  private:
    QLabel* ratio_;
};

std::span<const int> FileBarCommands();
std::span<const int> ZoomBarCommands();
std::span<const int> SpatialBarCommands();
std::span<const int> TransportBarCommands();

}  // namespace sonavel
