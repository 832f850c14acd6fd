// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_DIALOGDRIVER_H
#define VELMORA_TESTS_SUPPORT_DIALOGDRIVER_H

#include <QTest>
#include <QtWidgets>

/// Answers modal dialogs in the expected order, while the program waits for them. It rejects
/// a dialog that was not expected. Such a dialog is a problem, and so is an expected one that
/// never comes. A problem fails the test when the driver is destroyed (and ends a program that
/// is no test). Progress dialogs need not be expected.
class DialogDriver : public QObject
{
public:
    DialogDriver()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QCoreApplication::instance()->installEventFilter(this);
        connect(&timer, &QTimer::timeout, this, &DialogDriver::answerDialog);
        timer.start(1);
    }
    ~DialogDriver() override
    {
        for (const Answer& answer : answers) {
            problems.append("no dialog came for: " + answer.first + answer.second.join(", "));
        }
        if (abortValue >= 0) {
            problems.append(QString("no progress dialog reached %1").arg(abortValue));
        }
        const QByteArray text = problems.join('\n').toUtf8();
        if (!text.isEmpty() && !QTest::currentTestFunction()) {
            qFatal("%s", text.constData());
        } else if (!text.isEmpty() && !QTest::currentTestFailed()) {
            QTest::qFail(text.constData(), __FILE__, __LINE__);
        }
    }

    /// Expects a file dialog, which takes these files or this one folder; none cancels it.
    void answerFiles(const QStringList& paths) { answers.enqueue({QString(), paths}); }
    /// Expects a message box with this text and presses OK or Yes.
    void acknowledge(const QString& text) { answers.enqueue({text, {}}); }
    /// Cancels the next progress dialog that reaches the value, shown or not.
    void abortProgressAt(int value) { abortValue = value; }

protected:
    /// Sees progress dialogs while they are built, as a short run never shows them.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QProgressDialog*>(watched);
        const auto* bar = dialog ? dialog->findChild<QProgressBar*>() : nullptr;
        if (bar && event->type() == QEvent::ChildAdded) {
            connect(bar, &QProgressBar::valueChanged, this, [this, dialog](int value) {
                if (abortValue >= 0 && value >= abortValue) {
                    abortValue = -1;
                    emit dialog->canceled();
                }
            });
        }
        return false;
    }

private:
    using Answer = QPair<QString, QStringList>; ///< message (null for a file dialog) and paths

    /// Presses the button after this function returns: the timer rests while it runs, and the
    /// click may open the next dialog.
    void answerDialog()
    {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (!dialog || dialog->property("answered").toBool()
            || qobject_cast<QProgressDialog*>(dialog)) {
            return;
        }
        dialog->setProperty("answered", true);

        const auto* message = qobject_cast<QMessageBox*>(dialog);
        auto* fileName = dialog->findChild<QLineEdit*>("fileNameEdit");
        const QString found = message ? message->text() : dialog->windowTitle();
        const Answer answer = answers.isEmpty() ? Answer() : answers.head();
        const bool expected =
            !answers.isEmpty() && (message ? found == answer.first : answer.first.isNull());
        if (expected) {
            answers.dequeue();
        } else {
            problems.append("unexpected dialog: " + found);
        }
        if (expected && fileName && !answer.second.isEmpty()) {
            fileName->setText('"' + answer.second.join("\" \"") + '"');
        }

        // The button that accepts comes first, the one that rejects last.
        const bool accept = expected && (message || !answer.second.isEmpty());
        const auto buttons = dialog->findChild<QDialogButtonBox*>()->buttons();
        QTimer::singleShot(0, accept ? buttons.first() : buttons.last(), &QAbstractButton::click);
    }

    QTimer timer;
    QQueue<Answer> answers;
    int abortValue = -1;
    QStringList problems;
};

#endif
