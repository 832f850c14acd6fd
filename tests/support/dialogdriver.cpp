// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/dialogdriver.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

DialogDriver::DialogDriver()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCoreApplication::instance()->installEventFilter(this);
    connect(&timer, &QTimer::timeout, this, &DialogDriver::answerDialog);
    timer.start(1);
}

DialogDriver::~DialogDriver()
{
    for (const Answer& answer : answers) {
        problems.append("no dialog came for: " + answer.message + answer.paths.join(", "));
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

/// Sees progress dialogs while they are built, for a short run never shows them.
bool DialogDriver::eventFilter(QObject* watched, QEvent* event)
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

/// The button is pressed after this function: the timer rests while it runs, and the next
/// dialog may come from within the click.
void DialogDriver::answerDialog()
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
        !answers.isEmpty() && (message ? found == answer.message : answer.message.isNull());
    if (expected) {
        answers.dequeue();
    } else {
        problems.append("unexpected dialog: " + found);
    }
    if (expected && fileName && !answer.paths.isEmpty()) {
        fileName->setText('"' + answer.paths.join("\" \"") + '"');
    }

    // The button that accepts comes first, the one that rejects last.
    const bool accept = expected && (message || !answer.paths.isEmpty());
    const auto buttons = dialog->findChild<QDialogButtonBox*>()->buttons();
    QTimer::singleShot(0, accept ? buttons.first() : buttons.last(), &QAbstractButton::click);
}
