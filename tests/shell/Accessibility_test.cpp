// Every window can be used with a screen reader, and read: names, roles, buddies, contrast.
#include "editor/Editors.h"
#include "sbmodules/frmSBModules.h"
#include "services/frmError.h"
#include "shell/frmOptions.h"

#include <QAccessible>
#include <QDockWidget>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStyleFactory>
#include <cmath>

namespace velmora {
namespace {

struct Look {
    const char* Name;
    QPalette Palette;
};

std::vector<Look> Looks() {
    QPalette dark(QColor(45, 45, 48), QColor(37, 37, 40));
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    dark.setColor(QPalette::Link, QColor(110, 170, 255));
    QPalette contrast(Qt::black, Qt::black);
    contrast.setColor(QPalette::Base, Qt::black);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        contrast.setColor(role, Qt::white);
    contrast.setColor(QPalette::Link, Qt::yellow);
    return {{"light", QApplication::style()->standardPalette()}, {"dark", dark}, {"high contrast", contrast}};
}

double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Of a colour that may be translucent on an opaque one.
double Contrast(const QColor& text, const QColor& ground) {
    const auto mixed = [&](int over, int under) {
        return (over * text.alpha() + under * (255 - text.alpha())) / 255;
    };
    const QColor seen(mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
                      mixed(text.blue(), ground.blue()));
    const double one = Luminance(seen);
    const double other = Luminance(ground);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

class Accessibility : public WindowTest {
  protected:
    Accessibility() {
        temp.Write("Game/Data/A.event", BlockOf(EventKind, SoundEvent("Apple")));
        temp.Write("Game/Data/UP_Issues/A.UPIssue", BlockOf(UPIssueKind, SoundIssue("Apple")));
        temp.Write("Game/Data/A.SBModule", "SBMOD 1 Gun\r\nENDSBMOD\r\n");
    }
    ~Accessibility() override { QApplication::setPalette(QPalette()); }

    static std::string NameOf(const QWidget& widget) {
        return widget.metaObject()->className() + (" " + FromQt(widget.objectName()));
    }
    /// A screen reader is told what each control is and what it is called, and which label belongs to it.
    static void ExpectNames(const QWidget& shown) {
        for (QWidget* widget : shown.findChildren<QWidget*>()) {
            if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy())
                continue;
            SCOPED_TRACE(NameOf(*widget));
            const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_TRUE(spoken);
            EXPECT_NE(spoken->role(), QAccessible::NoRole);
            EXPECT_TRUE(spoken->role() != QAccessible::Client || widget->inherits("QScrollArea"));
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty());
        }
        for (const QLabel* label : shown.findChildren<QLabel*>()) {
            const QWidget* buddy = label->buddy();
            EXPECT_TRUE(!buddy || buddy->focusPolicy() != Qt::NoFocus || buddy->inherits("QLabel"))
                << NameOf(*label);
        }
    }
    static void ExpectColours(const QWidget& widget, QPalette::ColorRole text, QPalette::ColorRole ground) {
        const QPalette& palette = widget.palette();
        const auto group = widget.isEnabled() ? QPalette::Active : QPalette::Disabled;
        EXPECT_GE(Contrast(palette.color(group, text), palette.color(group, ground)), 4.5)
            << NameOf(widget) << ", roles " << text << " and " << ground;
    }
    /// What can be read can be read: fields also while they are off, for that is how records are looked at.
    static void ExpectContrast(const QWidget& shown, const QWidget* details) {
        for (const QWidget* widget : shown.findChildren<QWidget*>()) {
            const bool isField = details && details->isAncestorOf(widget);
            if (!widget->isVisible() ||
                (!widget->isEnabled() && (!isField || widget->inherits("QAbstractButton"))))
                continue;
            if (const auto* label = qobject_cast<const QLabel*>(widget)) {
                ExpectColours(*widget, QPalette::WindowText, QPalette::Window);
                if (label->text().contains(QLatin1String("href")))
                    ExpectColours(*widget, QPalette::Link, QPalette::Window);
            } else if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
                ExpectColours(*widget, QPalette::Text, QPalette::Base);
                if (!line->placeholderText().isEmpty())
                    ExpectColours(*widget, QPalette::PlaceholderText, QPalette::Base);
            } else if (widget->inherits("QPlainTextEdit") || widget->inherits("QAbstractItemView")) {
                ExpectColours(*widget, QPalette::Text, QPalette::Base);
            } else if (widget->inherits("QPushButton") || widget->inherits("QComboBox")) {
                ExpectColours(*widget, QPalette::ButtonText, QPalette::Button);
            }
        }
    }
    void ExpectReadable(const QWidget& shown, const char* detailsName = "") {
        ExpectNames(shown);
        const auto* details = shown.findChild<QWidget*>(QString::fromLatin1(detailsName));
        for (const Look& look : Looks()) {
            SCOPED_TRACE(look.Name);
            QApplication::setPalette(look.Palette);
            QApplication::processEvents();
            ExpectContrast(shown, details);
        }
    }
    /// With all docks open, while browsing and, where there is a command for it, while editing.
    template <class Window>
    void Walk(const char* details, const char* editItem) {
        Open<Window>();
        for (QDockWidget* dock : window->findChildren<QDockWidget*>())
            dock->show();
        QApplication::processEvents();
        ExpectReadable(*window, details);
        if (!editItem)
            return;
        Pick(editItem);
        ExpectReadable(*window, details);
        Pick("mnuDiscardChanges");
    }
};

TEST_F(Accessibility, OfTheEditors) {
    Walk<frmEvents>("fraEventDetails", "mnuEditThisEvent");
    Walk<frmUPIssues>("fraUPIssueDetails", "mnuEditThisIssue");
    Walk<frmSBModules>("fraSBModuleDetails", nullptr);
}

TEST_F(Accessibility, OfTheDialogs) {
    clsINI ini;
    ini.INIFile = temp / "VelWriter.ini";
    frmOptions options(ini);
    options.show();
    ExpectReadable(options);
    ErrorDetails details;
    details.CollectUserInput = true;
    frmError error(details);
    error.show();
    ExpectReadable(error);
}

TEST_F(Accessibility, ContrastIsThatOfTheEye) {
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Contrast(QColor(118, 118, 118), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(Contrast(QColor(0, 0, 0, 128), Qt::white), Contrast(QColor(127, 127, 127), Qt::white), 0.1);
}

} // namespace
} // namespace velmora
