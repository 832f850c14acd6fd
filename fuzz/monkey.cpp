// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Acts on the window at random and ends with an error if it crashes, warns, does not answer or
// takes ever more memory. The seed repeats a run. tests/monkey.sh builds and runs it.

#include "app/window/mainwindow.h"
#include "fuzz/answers.h"
#include "fuzz/messages.h"

#include <qcustomplot.h>

#include <unistd.h>

/// A function of the sanitizers, which count exactly; gcc has no header for it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

constexpr double longestAnswer = 5.0;   ///< seconds of processor time
constexpr unsigned longestAction = 600; ///< seconds of any time; more is a hang
constexpr int actionsPerRound = 125;
constexpr double permittedGrowth = 16.0; ///< MiB from round to round, caches of Qt included

// The first ones make sense.
constexpr int sensibleLists = 4;
const char* const lists[] = {"0,1,2,5,10",
                             "0:0.05:10",
                             "0:0.01:10",
                             "50,80,90",
                             "0:1:10",
                             "10:1:0",
                             "1",
                             "",
                             "1,x,2",
                             "nan,1,inf",
                             "5,5,5.0",
                             "0:0:0",
                             "1e308,-1e308,5e-324"};
const char* const numbers[] = {"0",     "1",      "-1",   "0.5",   "3",    "20",   "21",
                               "22",    "2a",     "inf",  "-inf",  "nan",  "",     "1e400",
                               "1e308", "5e-324", "7.5%", "_data", ".csv", "\"'&", "2147483648"};
constexpr int sensibleExpressions = 6;
const char* const expressions[] = {"THETA2*DOSE/(THETA3+DOSE)",
                                   "THETA1+THETA2*DOSE",
                                   "THETA2*DOSE*exp(ETA1)",
                                   "(THETA2+ETA1)*DOSE/(THETA3*exp(ETA2)+DOSE)",
                                   "THETA1+ETA3*DOSE+ETA2",
                                   "COL22*exp(ETA2)*DOSE",
                                   "THETA2*DOSE+ETA1",
                                   "(0-1-ofv/2)",
                                   "(0-2-ofv/2)",
                                   "COL21",
                                   "",
                                   "0/0",
                                   "1/0",
                                   "DOSE",
                                   "((((",
                                   "))",
                                   "ofv/0",
                                   "THETA999",
                                   "ETA12*DOSE",
                                   "ETA1000",
                                   "log(0-DOSE)",
                                   "1/DOSE",
                                   "THETA1 * DOSE",
                                   "0.04",
                                   "COL2",
                                   "Col22",
                                   "COL-1",
                                   "COL0",
                                   "1e308*DOSE"};

/// Numbers that may be typed into the spin boxes whose large numbers mean long work.
int largestTyped(const QSpinBox& box)
{
    const int sensible = box.objectName() == "_1_sb_numSimulations" ? 2000 : 40;
    return qMin(box.maximum(), sensible);
}

class Monkey
{
public:
    explicit Monkey(unsigned runSeed)
        : seed(runSeed)
    {
        user::show(window);
    }

    void run(int actions)
    {
        beginAnalysis();
        for (number = 0; number < actions; ++number) {
            dice = Dice(seed * 1000003U + unsigned(number));
            answers.reseed(seed * 1000003U + unsigned(number) + 500000U);
            alarm(longestAction);
            act();
            settle();
        }
        std::printf("%d actions, %d dialogs, %d aborts, longest wait %.2f s in #%d\n", actions,
                    answers.dialogs, answers.aborts, slowest, slowestAction);
    }

private:
    void act()
    {
        if (number % actionsPerRound == actionsPerRound - 1) {
            startAfresh();
        } else if (dice.once(12)) {
            log("turns to another page", &window);
            user::showPage(window, dice.roll(7));
        } else if (dice.once(25)) {
            const auto actions = window.findChildren<QAction*>(QRegularExpression("^action"));
            QAction* const action = dice.from(actions);
            log("triggers " + action->objectName(), &window);
            action->trigger();
        } else if (dice.once(80)) {
            log("resizes", &window);
            window.resize(200 + dice.roll(1400), 200 + dice.roll(1000));
        } else {
            const QList<QWidget*> widgets = reachable();
            actOn(widgets.isEmpty() ? &window : dice.from(widgets));
        }
    }

    /// Visible widgets with names; sometimes also those of no known kind.
    QList<QWidget*> reachable()
    {
        QList<QWidget*> found;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            if (!name.isEmpty() && !name.startsWith("qt_") && !widget->visibleRegion().isEmpty()
                && widget->isEnabled()
                && (isOneOf<QAbstractButton, QLineEdit, QSpinBox, QComboBox, QTableWidget,
                            QCustomPlot, QSlider, QTabWidget>(widget)
                    || dice.once(20))) {
                found.append(widget);
            }
        }
        return found;
    }

    template <typename... Kinds>
    static bool isOneOf(QWidget* widget)
    {
        return ((qobject_cast<Kinds*>(widget) != nullptr) || ...);
    }

    void actOn(QWidget* widget)
    {
        user::reach(widget);
        if (dice.once(15)) {
            openContextMenu(widget);
        } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            log("clicks", widget);
            user::click(button);
        } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
            type(edit);
        } else if (auto* box = qobject_cast<QSpinBox*>(widget)) {
            spin(box);
        } else if (auto* list = qobject_cast<QComboBox*>(widget)) {
            log("chooses", widget);
            user::chooseItem(list, dice.roll(list->count()));
        } else if (auto* table = qobject_cast<QTableWidget*>(widget)) {
            actOnTable(table);
        } else if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
            log("turns", widget);
            tabs->setCurrentIndex(dice.roll(tabs->count()));
        } else {
            useMouse(widget);
        }
    }

    /// Mostly what the editor expects.
    QString fittingText(const QWidget& edit)
    {
        const bool isList = edit.objectName() == "_1_le_possibleDoses"
                            || edit.objectName() == "_4_le_probabilities";
        switch (dice.once(5) ? dice.roll(3) : isList ? 0 : edit.objectName().isEmpty() ? 1 : 2) {
        case 0:
            return dice.from(lists);
        case 1:
            return dice.from(expressions);
        default:
            return dice.from(numbers);
        }
    }

    /// Types whole texts and single characters, and uses the keys of an editor.
    void type(QWidget* edit)
    {
        static const char characters[] = "0123456789.,:-+*/^()eE $COLETA";
        QString text = fittingText(*edit);
        if (dice.once(4)) {
            text.clear();
            for (int length = dice.roll(8); length > 0; --length) {
                text += QChar(characters[dice.roll(int(sizeof characters) - 1)]);
            }
        }
        log("types \"" + text + "\" into", edit);
        if (dice.once(3)) {
            for (const QChar character : text) {
                QTest::keyClick(edit, character.toLatin1());
                QTest::keyClick(
                    edit, dice.from(QVector<Qt::Key>{Qt::Key_Left, Qt::Key_End, Qt::Key_Backspace,
                                                     Qt::Key_Home, Qt::Key_End}));
            }
            QTest::keyClick(
                edit,
                dice.from(QVector<Qt::Key>{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Z}),
                dice.once(4) ? Qt::ControlModifier : Qt::NoModifier);
        } else if (dice.once(8)) {
            QApplication::clipboard()->setText(text + QString::fromUtf8(u8"θ\U0001d6c0\n\t"));
            QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        } else {
            user::replaceText(edit, text);
        }
    }

    void spin(QSpinBox* box)
    {
        const int value = box->minimum() + dice.roll(largestTyped(*box) - box->minimum() + 1);
        log(QString("spins (%1)").arg(value), box);
        switch (dice.roll(4)) {
        case 0:
            wheel(box);
            break;
        case 1:
            QTest::keyClick(box, dice.once(2) ? Qt::Key_Up : Qt::Key_Down);
            break;
        default:
            user::typeText(box, QString::number(value));
        }
        if (box->value() > qMax(box->minimum(), largestTyped(*box))) {
            user::typeText(box, QString::number(value)); // not to wander off step by step
        }
    }

    void actOnTable(QTableWidget* table)
    {
        const int row = dice.roll(table->rowCount());
        const int column = dice.roll(table->columnCount());
        if (!table->model()->index(row, column).isValid() || dice.once(8)) {
            useMouse(dice.once(2) ? table->horizontalHeader()->viewport() : table->viewport());
            return;
        }
        log(QString("picks cell %1,%2 of").arg(row).arg(column), table);
        const QPoint place = user::clickCell(table, row, column);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        QWidget* const editor = QApplication::focusWidget();
        if (qobject_cast<QLineEdit*>(editor) && table->isAncestorOf(editor)) {
            type(editor);
            return;
        }
        QTest::keyClick(table,
                        dice.from(QVector<Qt::Key>{Qt::Key_Down, Qt::Key_Right, Qt::Key_PageDown,
                                                   Qt::Key_Home, Qt::Key_C, Qt::Key_A}),
                        dice.once(2) ? Qt::ControlModifier : Qt::NoModifier);
    }

    /// Drags, clicks, double-clicks and wheels.
    void useMouse(QWidget* widget)
    {
        log("uses the mouse on", widget);
        for (int times = 1 + dice.roll(3); times > 0; --times) {
            const QPoint place = placeOn(widget);
            switch (dice.roll(4)) {
            case 0:
                QTest::mouseClick(widget, Qt::LeftButton, {}, place);
                break;
            case 1:
                QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
                break;
            case 2:
                QTest::mousePress(widget, Qt::LeftButton, {}, place);
                for (int moves = dice.roll(6); moves > 0; --moves) {
                    move(widget, placeOn(widget));
                }
                QTest::mouseRelease(widget, Qt::LeftButton, {}, placeOn(widget));
                break;
            default:
                wheel(widget);
            }
        }
    }

    QPoint placeOn(QWidget* widget)
    {
        return {dice.roll(widget->width()), dice.roll(widget->height())};
    }

    /// With the button held, which QTest's own move does not do.
    static void move(QWidget* widget, const QPoint& place)
    {
        QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }

    void wheel(QWidget* widget)
    {
        const QPoint place = placeOn(widget);
        for (int turns = 1 + dice.roll(6); turns > 0; --turns) {
            const QPoint angle(0, dice.once(2) ? 120 : -120);
            QWheelEvent event(place, widget->mapToGlobal(place), {}, angle, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(widget, &event);
        }
    }

    void openContextMenu(QWidget* widget)
    {
        log("opens the context menu of", widget);
        auto* area = qobject_cast<QAbstractScrollArea*>(widget);
        QWidget* const target = area ? area->viewport() : widget;
        const QPoint place = placeOn(target);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, target->mapToGlobal(place));
        QApplication::sendEvent(target, &event);
    }

    /// Finishes events, menus and editors, and judges the action.
    void settle()
    {
        for (int round = 0;
             round < 3 || QApplication::activePopupWidget() || QApplication::activeModalWidget();
             ++round) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        answers.measureWait();
        if (answers.longestWait > slowest) {
            slowest = answers.longestWait;
            slowestAction = number;
            std::printf("    took %.2f s\n", slowest);
        }
        if (answers.longestWait > longestAnswer) {
            qFatal("#%d: no answer for %.1f s", number, answers.longestWait);
        }
        answers.longestWait = 0.0;
    }

    /// Opens a small analysis. Nothing of earlier ones may be left afterwards.
    void startAfresh()
    {
        log("starts afresh", &window);
        window.resize(912, 725);
        for (int page = 6; page >= 0; --page) {
            user::showPage(window, page); // charts of hidden pages keep their size
            settle();
        }
        answers.nextFile("sim0.csv"); // simulations stay when an analysis is opened
        auto* simulations = window.findChild<QPushButton*>("_5_pb_importSimRawRes");
        window.findChild<QTabWidget*>()->setCurrentWidget(simulations->parentWidget());
        user::click(simulations);
        answers.nextFile("small");
        window.findChild<QAction*>("actionOpen")->trigger();
        answers.nextFile("fresh");
        window.findChild<QAction*>("actionSave")->trigger();
        QFile file(files.path("fresh"));
        if (!file.open(QIODevice::ReadOnly)
            || file.readAll() != ProjectBytes(StrangeFiles::smallItems()).bytes) {
            qFatal("#%d: an opened analysis is not as it was saved", number);
        }
        settle();
        const double now = double(__sanitizer_get_current_allocated_bytes()) / (1 << 20);
        std::printf("    %.1f MiB in use\n", now);
        if (++rounds <= 8) {
            settledMemory = qMax(settledMemory, now); // fonts and caches fill
        } else if (now > settledMemory + permittedGrowth) {
            qFatal("#%d: memory grew from %.1f to %.1f MiB", number, settledMemory, now);
        }
        beginAnalysis();
    }

    /// Something to work with: a study, its doses, endpoints, weights and levels.
    void beginAnalysis()
    {
        auto* tabs = window.findChild<QTabWidget*>();
        tabs->setCurrentIndex(1);
        for (const auto& [edit, text] : {std::pair("_m1_le_modelNumPrefex", "estimation_model"),
                                         {"_m1_le_dataNumberPrefex", "_data"},
                                         {"_m1_le_dataNumberSuffix", ".csv"},
                                         {"_m1_le_colNumOFV", "20"},
                                         {"_m1_le_colNumTHETA1", "21"}}) {
            user::typeText(window.findChild<QLineEdit*>(edit), text);
        }
        answers.nextFile("study");
        user::click(window.findChild<QPushButton*>("__pb_import"));
        user::showPage(window, 2);
        user::typeText(window.findChild<QLineEdit*>("_1_le_possibleDoses"),
                       lists[dice.roll(sensibleLists)]);
        auto* endPoints = window.findChild<QTableWidget*>("_1_tw_endPoints");
        for (int model = 0; model < endPoints->rowCount(); ++model) {
            user::editCell(endPoints, model, 0, expressions[dice.roll(sensibleExpressions)]);
        }
        user::showPage(window, 3); // proposes weights
        user::showPage(window, 5);
        user::typeText(window.findChild<QLineEdit*>("_4_le_probabilities"),
                       lists[dice.roll(sensibleLists)]);
        user::showPage(window, 3 + dice.roll(4));
    }

    void log(const QString& what, const QWidget* widget) const
    {
        std::printf("#%d %s %s\n", number, qPrintable(what), qPrintable(widget->objectName()));
    }

    const unsigned seed;
    int number = 0;
    Dice dice{0};
    const StrangeFiles files{};
    Answers answers{files};
    MainWindow window;
    double slowest = 0.0;
    int slowestAction = 0;
    int rounds = 0;
    double settledMemory = 0.0;
};

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions(
        {{"seed", "Repeats a run.", "N", "1"}, {"actions", "How many.", "N", "300"}});
    options.process(application);
    qInstallMessageHandler(failOnWarning);
    const unsigned seed = options.value("seed").toUInt();
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // as the program may end at any time
    std::printf("seed %u\n", seed);
    Monkey(seed).run(options.value("actions").toInt());
    return 0;
}
