// The one QApplication of a test program, without a screen unless the environment names a platform.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

namespace sonavel {

// Ends the application before main returns: Qt's own static objects do not outlive it well.
class QtTestEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QApplication>(argc_, argv_);
    }
    void TearDown() override { application_.reset(); }

  private:
    int argc_ = 1;
    char name_[9] = "ui_tests";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

inline ::testing::Environment* const kQtTestEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtTestEnvironment);

inline QApplication& TestApplication() {
    return *qApp;
}

}  // namespace sonavel
