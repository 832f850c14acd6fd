// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_FINDINGS_FINDINGSVIEW_H
#define VELMORA_APP_FINDINGS_FINDINGSVIEW_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <functional>

class QBrush;
class QStatusBar;
class QTableWidget;
class QTableWidgetItem;
class QToolBox;

/// The background of a table's cell with findings, over one of any colour.
QBrush findingBrush();

/// The same as an opaque colour, for headings, whose painting ignores transparency.
QBrush headingBrush();

/// A tooltip that shows the text literally, even if a file's name looks like markup.
QString plainToolTip(const QString& text);

/// Shows findings on the inputs of a window: in tooltips, as tints, and one in the status bar.
///
/// An input is registered with its check, and renewed when something changes on which the check
/// depends. Findings stand above the input's own description (its accessible description) in its
/// tooltip. Nothing here runs an edit handler.
class FindingsView : public QObject
{
public:
    using Check = std::function<QStringList()>;

    FindingsView(QWidget* watchedWindow, QToolBox* windowPages, QStatusBar* statusBar);

    /// Registers an input and shows the findings of its check. The tooltip also shows the notes,
    /// which give no tint.
    void watch(QWidget* input, const Check& check, const Check& notes = {});

    /// Lets the status bar show the findings of the current cell of a table whenever it changes.
    void follow(QTableWidget* table);

    /// The same for a table of expressions; the status bar also shows its findings while the page
    /// is shown and the current input has none.
    void followFormulas(QTableWidget* table);

    /// Checks one input, several or all again.
    void renew(QWidget* input) { renew(QVector<QWidget*>{input}); }
    void renew(const QVector<QWidget*>& some);
    void renewAll();

    /// Shows findings on a cell; without any it has neither tooltip nor tint. No cell is
    /// created.
    void show(QTableWidgetItem* item, const QStringList& findings);

    /// Sets the text of the status bar while the current input has no findings, and the findings
    /// that it sums up.
    void setGeneral(const QString& text, const QStringList& summedUp);

    /// Lists the findings of everything in the tooltip of the status bar when it opens, in place of
    /// the findings that are summed up.
    void listInStatusBar(const Check& allFindings);

    /// The findings and notes of all registered inputs, each once and after the name of its input.
    QStringList all() const;

    /// Renews the status bar, after a change of cells.
    void showStatus();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Watched
    {
        QWidget* input;
        Check check; ///< may be empty, as notes may
        Check notes;
    };
    static void showOnWidget(const Watched& watched);
    QStringList findingsOn(const QWidget* input) const;
    void makeCurrent(QWidget* input);

    QWidget* window;
    QToolBox* pages;
    QStatusBar* bar;
    QVector<Watched> inputs;
    QVector<QTableWidget*> formulas;
    QPointer<QWidget> current; ///< what was made current last
    QString general;
    Check everything; ///< in the tooltip of the status bar
};

#endif
