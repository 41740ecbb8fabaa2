// The program's end from outside: SIGTERM, SIGHUP and SIGINT, and the end of the desktop's session.
#pragma once

#include <QObject>
#include <functional>

namespace sonavel {

// Calls `leave` in the event loop when a signal asks the program to end. One of these at a time.
class EndSignals : public QObject {
    Q_OBJECT

  public:
    explicit EndSignals(std::function<void()> leave, QObject* parent = nullptr);
    // From here on the signals end the program at once, as they do for others.
    ~EndSignals() override;

  private:
    void Serve();

    std::function<void()> leave_;
};

}  // namespace sonavel
