// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/safefile.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

class TestSafeFile : public QObject
{
    Q_OBJECT

private slots:
    void replaces_data()
    {
        // Of links name>target, blanks between them.
        const Rows<QString, QString, QString> row("path", "links", "written");
        const QString longest(255, 'x');
        row("new file", "new", "", "new");
        row("older file", "older", "", "older");
        row("longest name", longest, "", longest);
        row("link to an older file", "a", "a>older", "older");
        row("chain of links", "a", "a>folder/b folder/b>../older", "older");
        row("link to nothing", "a", "a>new", "new");
        row("link in a linked folder", "a/b", "a>folder/in folder/in/b>../new", "folder/new");
        row("loop of links", "a", "a>b b>a", "");
        row("folder", "folder", "", "");
        row("missing folder", "missing/new", "", "");
        row("no name", "", "", "");
    }
    void replaces()
    {
        QFETCH(QString, path);
        QFETCH(QString, links);
        QFETCH(QString, written);
        const StudyFiles files;
        QVERIFY(QDir(files.path()).mkpath("folder/in"));
        QCOMPARE(chmod(qPrintable(files.write("older", "older")), 0640), 0);
        const int permissions = int(QFile::permissions(files.path("older")));
        QStringList names;
        for (const QString& link : links.split(' ', Qt::SkipEmptyParts)) {
            names.append(files.path(link.section('>', 0, 0)));
            QCOMPARE(symlink(qPrintable(link.section('>', 1)), qPrintable(names.last())), 0);
        }
        for (const char* content : {"first", "second"}) {
            SafeFile file(path.isEmpty() ? path : files.path(path));
            const bool isWritten =
                file.open(QIODevice::WriteOnly) && file.write(content) > 0 && file.commit();
            QCOMPARE(isWritten, !written.isEmpty());
            QVERIFY2(!isWritten || contentOf(files.path(written)) == content, content);
            QCOMPARE(file.errorString() == "Unknown error", isWritten);
        }
        for (const QString& name : qAsConst(names)) {
            QVERIFY2(QFileInfo(name).isSymLink(), qPrintable(name));
        }
        QVERIFY(written == "older" || contentOf(files.path("older")) == "older");
        QCOMPARE(int(QFile::permissions(files.path("older"))), permissions);
        QVERIFY(QDir(files.path(), "velmora-*").isEmpty());
    }

    void keepsOlderFile()
    {
        const StudyFiles files;
        const QString path = files.write("older", "older");
        {
            SafeFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("newer") == 5);
            QCOMPARE(QDir(files.path(), "velmora-*.tmp").count(), 1U);
        }
        QCOMPARE(contentOf(path), "older");
        QCOMPARE(QDir(files.path()).count(), 3U); // with . and ..
    }
};

QTEST_GUILESS_MAIN(TestSafeFile)
#include "tst_safefile.moc"
