#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace velmora {

/// Answers modal windows in the order in which they come up; the work that shows them runs in between. One
/// that was not expected, did not come or stayed after its answer fails the test.
class ModalAnswers {
  public:
    ModalAnswers() {
        QObject::connect(&timer, &QTimer::timeout, [this] { Look(); });
        timer.start(1);
    }
    ~ModalAnswers() { EXPECT_EQ(steps.size(), 0u) << "modal windows that never came up"; }

    /// What to do with the next modal window of this type; `answer` is to close it.
    template <class Window>
    void Expect(std::function<void(Window&)> answer) {
        steps.push_back([answer = std::move(answer)](QWidget& modal) {
            auto* window = dynamic_cast<Window*>(&modal);
            ASSERT_TRUE(window) << "another modal window: " << modal.metaObject()->className();
            answer(*window);
        });
    }

  private:
    void Look() {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isActiveWindow())
            return;
        if (steps.empty()) {
            ADD_FAILURE() << "unexpected modal window: " << modal->windowTitle().toStdString();
        } else {
            const auto step = std::move(steps.front());
            steps.pop_front();
            step(*modal);
            EXPECT_FALSE(modal->isVisible()) << "still open: " << modal->windowTitle().toStdString();
        }
        modal->hide(); // whatever failed, the work goes on
    }

    QTimer timer;
    std::deque<std::function<void(QWidget&)>> steps;
};

} // namespace velmora
