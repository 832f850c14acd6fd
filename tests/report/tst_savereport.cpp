// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

#include <QXmlStreamReader>

/// The report as the window saves it.
class TestSaveReport : public WindowTest
{
    Q_OBJECT

    QByteArray saved(const QString& name, const QString& message = {})
    {
        DialogDriver dialogs;
        dialogs.answerFiles({files.path(name)});
        if (!message.isEmpty()) {
            dialogs.acknowledge(message);
        }
        user::chooseEntry(reach<QWidget>("_4_tw_doseChoice"), "Save report...");
        return contentOf(files.path(name));
    }

    /// What stands in the elements of a page that is well-formed XML, too, a line each; rows of
    /// tables in one line.
    static QString textOf(const QByteArray& page)
    {
        QXmlStreamReader reader(page);
        QString text;
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::Characters && !reader.isWhitespace()) {
                text += reader.text();
            } else if (token == QXmlStreamReader::EndElement) {
                text += reader.name() == "td" || reader.name() == "th" ? '|' : '\n';
            }
        }
        return reader.hasError() ? reader.errorString() : text;
    }

private slots:
    void init() { openWindow(); }

    /// Of two samples: 26.8941 % of the first one's weight and all of the second one's hit at
    /// dose 2.
    void tellsNumbers()
    {
        calculateDoses(0);
        const QString text = textOf(saved("report.html"));
        for (const char* const part :
             {"\nDose|Probability (%)|Monte Carlo error|\n\n0|0|0|\n0.1|50|16.3383|\n"
              "2|63.4471|25.8468|\n"}) {
            QVERIFY2(text.contains(part), qPrintable(text.mid(text.indexOf("\nDose|"), 300)));
        }
    }
};

QTEST_MAIN(TestSaveReport)
#include "tst_savereport.moc"
