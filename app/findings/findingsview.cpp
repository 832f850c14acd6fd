// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/findings/findingsview.h"

#include "app/findings/blankcelldelegate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTableWidget>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolBox>

namespace {

/// Drawn over a background of any colour.
const QColor findingTint(255, 176, 0, 90);

QColor blended(const QColor& base)
{
    const double share = findingTint.alphaF();
    return QColor::fromRgbF(base.redF() + share * (findingTint.redF() - base.redF()),
                            base.greenF() + share * (findingTint.greenF() - base.greenF()),
                            base.blueF() + share * (findingTint.blueF() - base.blueF()));
}

/// The text that an item's tooltip shows.
QString plainText(const QTableWidgetItem& item)
{
    const QString toolTip = item.toolTip();
    return Qt::mightBeRichText(toolTip) ? QTextDocumentFragment::fromHtml(toolTip).toPlainText()
                                        : toolTip;
}

/// The colour that an input's ground is painted with. A check box has none of its own, and
/// shows that of the page below it.
QPalette::ColorRole groundOf(const QWidget* input)
{
    if (qobject_cast<const QPushButton*>(input) != nullptr) {
        return QPalette::Button;
    }
    return qobject_cast<const QAbstractButton*>(input) != nullptr ? input->backgroundRole()
                                                                  : QPalette::Base;
}

QStringList reported(const FindingsView::Check& check)
{
    return check ? check() : QStringList();
}

/// As many lines as a tooltip can show.
QString listed(const QStringList& lines)
{
    constexpr int most = 40;
    QStringList shown = lines.mid(0, most);
    if (lines.size() > most) {
        shown.append(QString("and %1 more").arg(lines.size() - most));
    }
    return shown.join('\n');
}

} // namespace

QBrush findingBrush()
{
    return findingTint;
}

QBrush headingBrush()
{
    return blended(QApplication::palette().color(QPalette::Button));
}

QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? "<pre>" + text.toHtmlEscaped() + "</pre>" : text;
}

FindingsView::FindingsView(QWidget* watchedWindow, QToolBox* windowPages, QStatusBar* statusBar)
    : QObject(watchedWindow)
    , window(watchedWindow)
    , pages(windowPages)
    , bar(statusBar)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        if (now != nullptr && now->window() == window) {
            makeCurrent(now);
        }
    });
    // A menu clears the status bar when it is closed.
    connect(bar, &QStatusBar::messageChanged, this, [this](const QString& text) {
        if (text.isEmpty()) {
            showStatus();
        }
    });
    connect(pages, &QToolBox::currentChanged, this, [this] { makeCurrent(nullptr); });
}

void FindingsView::watch(QWidget* input, const Check& check, const Check& notes)
{
    inputs.append({input, check, notes});
    renew(input);
}

void FindingsView::follow(QTableWidget* table)
{
    connect(table, &QTableWidget::currentCellChanged, this, [this, table] { makeCurrent(table); });
}

void FindingsView::followFormulas(QTableWidget* table)
{
    formulas.append(table);
    follow(table);
}

void FindingsView::renew(const QVector<QWidget*>& some)
{
    for (const Watched& watched : qAsConst(inputs)) {
        if (some.contains(watched.input)) {
            showOnWidget(watched);
        }
    }
    showStatus();
}

void FindingsView::renewAll()
{
    for (const Watched& watched : qAsConst(inputs)) {
        showOnWidget(watched);
    }
    showStatus();
}

void FindingsView::showOnWidget(const Watched& watched)
{
    QWidget* input = watched.input;
    const QStringList findings = reported(watched.check);
    QStringList texts = findings + reported(watched.notes);
    if (!input->accessibleDescription().isEmpty()) {
        texts.append(input->accessibleDescription());
    }
    input->setToolTip(plainToolTip(texts.join('\n')));
    if (!watched.check) {
        return;
    }
    const QPalette::ColorRole ground = groundOf(input);
    QPalette palette; // what is not set here follows the application's
    if (!findings.isEmpty()) {
        palette.setColor(ground, blended(palette.color(ground)));
    }
    const bool isBare = ground != QPalette::Base && ground == input->backgroundRole();
    input->setAutoFillBackground(isBare && !findings.isEmpty());
    input->setPalette(palette);
}

void FindingsView::show(QTableWidgetItem* item, const QStringList& findings)
{
    const QString text = plainToolTip(findings.join('\n'));
    if (item == nullptr || item->toolTip() == text) {
        return;
    }
    const QSignalBlocker quiet(item->tableWidget());
    item->setToolTip(text);
    item->setData(Qt::BackgroundRole, text.isEmpty() ? QVariant() : findingBrush());
}

void FindingsView::setGeneral(const QString& text, const QStringList& summedUp)
{
    general = text;
    bar->setToolTip(plainToolTip(listed(summedUp)));
    showStatus();
}

void FindingsView::listInStatusBar(const Check& allFindings)
{
    everything = allFindings;
    bar->installEventFilter(this);
}

bool FindingsView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        bar->setToolTip(plainToolTip(listed(reported(everything))));
    }
    return QObject::eventFilter(watched, event);
}

QStringList FindingsView::all() const
{
    QStringList texts;
    QStringList found;
    for (const Watched& watched : inputs) {
        for (const QString& text : reported(watched.check) + reported(watched.notes)) {
            if (!texts.contains(text)) {
                texts.append(text);
                const auto* button = qobject_cast<const QAbstractButton*>(watched.input);
                const QString name =
                    button != nullptr ? button->text() : watched.input->accessibleName();
                found.append(name + ": " + text);
            }
        }
    }
    return found;
}

/// The current findings on an input; for a table, those on its current cell.
QStringList FindingsView::findingsOn(const QWidget* input) const
{
    const auto* table = qobject_cast<const QTableWidget*>(input);
    if (table != nullptr && table->currentRow() >= 0) {
        const QTableWidgetItem* item = table->currentItem();
        const auto* blank = dynamic_cast<const BlankCellDelegate*>(table->itemDelegate());
        QStringList ofCell = item != nullptr    ? plainText(*item).split('\n', Qt::SkipEmptyParts)
                             : blank != nullptr ? QStringList(blank->finding())
                                                : QStringList();
        if (!ofCell.isEmpty()) {
            return ofCell;
        }
    }
    for (const Watched& watched : inputs) {
        if (watched.input == input) {
            return reported(watched.check) + reported(watched.notes);
        }
    }
    return {};
}

void FindingsView::makeCurrent(QWidget* input)
{
    current = input;
    showStatus();
}

/// Shows in the status bar the first finding on what was made current last, else on the
/// formula that is current on the page, else what is said in general.
void FindingsView::showStatus()
{
    QStringList found = findingsOn(current);
    const QWidget* page = pages->currentWidget();
    for (const QTableWidget* table : qAsConst(formulas)) {
        if (found.isEmpty() && page->isAncestorOf(table)) {
            found = findingsOn(table);
        }
    }
    const QString text = found.isEmpty() ? general : found.first();
    if (text != bar->currentMessage()) {
        bar->showMessage(text);
    }
}
