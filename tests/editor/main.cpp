#include <QApplication>
#include <gtest/gtest.h>

// The toolkit's font and platform plug-ins keep memory until the process ends; leaks are looked for in the
// core's tests.
// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer's name
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0";
}
// NOLINTEND(bugprone-reserved-identifier)

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Tests reach for no desktop, whoever runs them.
    qunsetenv("DISPLAY");
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DICPATH", "/no-dictionaries"); // what is said of texts is not the host's
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
