// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_ANSWERS_H
#define VELMORA_FUZZ_ANSWERS_H

#include "fuzz/strangefiles.h"
#include "tests/support/userinput.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <random>

/// Random choices; the same seed repeats them.
class Dice
{
public:
    explicit Dice(unsigned seed)
        : generator(seed)
    {
    }

    /// 0 to sides - 1.
    int roll(int sides) { return int(generator() % unsigned(qMax(1, sides))); }
    bool once(int sides) { return roll(sides) == 0; }
    template <typename List>
    auto from(const List& list)
    {
        return *(std::begin(list) + roll(int(std::end(list) - std::begin(list))));
    }

private:
    std::mt19937 generator;
};

/// Answers any dialog or menu that the program opens, at random, while the program waits. Also
/// measures how long the program lets its user wait, as processor time, so that a busy computer
/// does not matter.
class Answers : public QObject
{
public:
    explicit Answers(const StrangeFiles& strangeFiles)
        : files(strangeFiles)
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QCoreApplication::instance()->installEventFilter(this);
        connect(&timer, &QTimer::timeout, this, &Answers::look);
        timer.start(1);
    }

    /// The choices of the next action do not depend on how long the last one took.
    void reseed(unsigned seed)
    {
        dice = Dice(seed);
        abortValue = dice.once(2) ? dice.roll(5) : -1;
        measureWait();
        abortTime = lastLook + (dice.once(3) ? 0.1 * dice.roll(10) : 2.0);
        fixedFile.clear();
    }

    /// The next file dialog takes this file.
    void nextFile(const QString& name)
    {
        fixedFile = files.path(name);
        abortValue = -1;
    }

    /// Seconds since the program last processed events. Keeps the longest so far.
    void measureWait()
    {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        const double seconds = double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
        longestWait = qMax(longestWait, seconds - lastLook);
        lastLook = seconds;
    }

    double longestWait = 0.0;
    int dialogs = 0;
    int aborts = 0;

protected:
    /// Sees progress dialogs while they are built, as a short run never shows them.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QProgressDialog*>(watched);
        const auto* bar = dialog ? dialog->findChild<QProgressBar*>() : nullptr;
        if (bar && event->type() == QEvent::ChildAdded) {
            connect(bar, &QProgressBar::valueChanged, dialog, [this, dialog](int value) {
                if (abortValue >= 0 && value >= abortValue) {
                    abort(dialog);
                }
            });
        }
        return false;
    }

private:
    void abort(QProgressDialog* dialog)
    {
        abortValue = -1;
        abortTime = std::numeric_limits<double>::infinity();
        ++aborts;
        emit dialog->canceled();
    }

    void look()
    {
        measureWait();
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            answerMenu(menu);
            return;
        }
        QWidget* const dialog = QApplication::activeModalWidget();
        if (!dialog) {
            return;
        }
        if (auto* progress = qobject_cast<QProgressDialog*>(dialog)) {
            if (lastLook > abortTime) {
                abort(progress);
            }
            return;
        }
        const int looks = dialog->property("looks").toInt();
        dialog->setProperty("looks", looks + 1);
        if (looks == 0) {
            ++dialogs;
            answer(dialog, !fixedFile.isEmpty() || !dice.once(6));
        } else if (looks == 50) { // the dialog does not accept its input
            answer(dialog, false);
        }
    }

    /// Presses the key after this function returns, as the timer rests while it runs.
    void answerMenu(QMenu* menu)
    {
        if (menu->property("answered").toBool()) {
            return;
        }
        menu->setProperty("answered", true);
        const int steps = dice.roll(menu->actions().size() + 1);
        QTimer::singleShot(0, menu, [menu, steps] {
            menu->setProperty("answered", false);
            for (int step = 0; step < steps; ++step) {
                QTest::keyClick(menu, Qt::Key_Down);
            }
            QTest::keyClick(menu, steps > 0 ? Qt::Key_Return : Qt::Key_Escape);
        });
    }

    void answer(QWidget* dialog, bool accept)
    {
        if (auto* fileDialog = qobject_cast<QFileDialog*>(dialog)) {
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            const QString chosen = paths(*fileDialog).join("\" \"");
            std::printf("    %s %s\n", accept ? "file:" : "no file", qPrintable(chosen));
            name->setText('"' + chosen + '"');
        }
        if (auto* message = qobject_cast<QMessageBox*>(dialog)) {
            std::printf("    says: %s\n", qPrintable(message->text()));
        }
        const auto* box = dialog->findChild<QDialogButtonBox*>();
        const auto buttons = box ? box->buttons() : QList<QAbstractButton*>();
        if (buttons.isEmpty()) {
            QTimer::singleShot(0, dialog, &QWidget::close);
        } else {
            QTimer::singleShot(0, accept ? buttons.first() : buttons.last(),
                               &QAbstractButton::click);
        }
    }

    QStringList paths(const QFileDialog& dialog)
    {
        if (!fixedFile.isEmpty()) {
            return {fixedFile};
        }
        if (dialog.fileMode() == QFileDialog::Directory) {
            return {files.path(dice.once(2) ? "study" : dice.from(StrangeFiles::folders()))};
        }
        if (dialog.acceptMode() == QFileDialog::AcceptSave) {
            return {files.path(dice.from(
                QStringList{"saved1", "saved2", "missing/saved", "study", "device", "pipe.csv"}))};
        }
        const QStringList names = dice.once(3) ? files.names() : likelyNames(dialog.windowTitle());
        const bool several = dialog.fileMode() == QFileDialog::ExistingFiles;
        QStringList chosen;
        do {
            chosen.append(files.path(dice.from(names)));
        } while (several && !dice.once(3));
        return chosen;
    }

    /// The files of the kind that the dialog asks for.
    QStringList likelyNames(const QString& title) const
    {
        const QString pattern = title.startsWith("Open")             ? "/(small|saved|uneven|cut)"
                                : title.startsWith("Select PsN")     ? "/raw_results_[^e]"
                                : title.startsWith("Select raw_res") ? "/sim"
                                                                     : "/true";
        return files.names().filter(QRegularExpression(pattern));
    }

    const StrangeFiles& files;
    Dice dice{0};
    QTimer timer;
    QString fixedFile;
    double lastLook = 0.0;
    int abortValue = -1;
    double abortTime = 0.0; ///< processor time from which a visible progress dialog is aborted
};

#endif
