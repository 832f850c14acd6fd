// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_DIALOGDRIVER_H
#define VELMORA_TESTS_SUPPORT_DIALOGDRIVER_H

#include <QQueue>
#include <QStringList>
#include <QTimer>

/// Answers modal dialogs in the order in which they are expected, while the program waits
/// for them. A dialog that was not expected is rejected and is a problem, as is an expected
/// one that never comes; a problem fails the test at the end of the driver's life (and ends
/// another program). Progress dialogs run without being expected.
class DialogDriver : public QObject
{
public:
    DialogDriver();
    ~DialogDriver() override;

    /// A file dialog is to come and takes these files, or this one directory; none cancels it.
    void answerFiles(const QStringList& paths) { answers.enqueue({QString(), paths}); }
    /// A message box with this text is to come; OK or Yes is pressed.
    void acknowledge(const QString& text) { answers.enqueue({text, {}}); }
    /// The next progress dialog that reaches the value is cancelled there, shown or not.
    void abortProgressAt(int value) { abortValue = value; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Answer
    {
        QString message; ///< null for a file dialog
        QStringList paths;
    };

    void answerDialog();

    QTimer timer;
    QQueue<Answer> answers;
    int abortValue = -1;
    QStringList problems;
};

#endif
