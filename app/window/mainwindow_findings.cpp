// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the user should know about data and inputs, in tooltips, tints and the status bar.
// Nothing here changes the analysis, draws a random number or redraws a chart.

#include "analysis/checkup/heading.h"
#include "analysis/checkup/inputcheck.h"
#include "app/widgets/boundedit.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "model/diagnosis.h"
#include "ui_mainwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QSignalBlocker>
#include <QTextDocumentFragment>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Drawn over a background of any colour.
const QColor findingTint(255, 176, 0, 90);

/// A table looks through all of its items to set the tooltip of one.
constexpr int mostDescribed = 20'000;

QColor blended(const QColor& base)
{
    const double share = findingTint.alphaF();
    return QColor::fromRgbF(base.redF() + share * (findingTint.redF() - base.redF()),
                            base.greenF() + share * (findingTint.greenF() - base.greenF()),
                            base.blueF() + share * (findingTint.blueF() - base.blueF()));
}

/// A tooltip that shows the text as it stands, even if a file's name looks like markup.
QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? "<pre>" + text.toHtmlEscaped() + "</pre>" : text;
}

/// The text that an item's tooltip shows.
QString plainText(const QTableWidgetItem& item)
{
    const QString toolTip = item.toolTip();
    return Qt::mightBeRichText(toolTip) ? QTextDocumentFragment::fromHtml(toolTip).toPlainText()
                                        : toolTip;
}

/// Shows findings on a cell. Silent, so that no edit handler runs.
void showOnItem(QTableWidgetItem* item, const QString& text)
{
    if (item == nullptr || item->toolTip() == text) {
        return;
    }
    const QSignalBlocker quiet(item->tableWidget());
    item->setToolTip(text);
    item->setData(Qt::BackgroundRole, text.isEmpty() ? QVariant() : QBrush(findingTint));
}

/// Shows findings on any other input, above what its description says.
void showOnWidget(QWidget* input, const QStringList& findings)
{
    QStringList told = findings;
    told.append(input->accessibleDescription());
    input->setToolTip(plainToolTip(told.join('\n')));
    const bool isButton = qobject_cast<QAbstractButton*>(input) != nullptr;
    const QPalette::ColorRole role = isButton ? QPalette::Window : QPalette::Base;
    QPalette palette; // what is not set here follows the application's
    if (!findings.isEmpty()) {
        palette.setColor(role, blended(palette.color(role)));
    }
    input->setAutoFillBackground(isButton && !findings.isEmpty());
    input->setPalette(palette);
}

QStringList lines(const QVector<Diagnosis>& diagnoses)
{
    QStringList texts;
    for (const Diagnosis& diagnosis : diagnoses) {
        texts.append(
            QString("Character %1: %2").arg(diagnosis.position + 1).arg(diagnosis.message));
    }
    return texts;
}

int widestRow(const Table& rows)
{
    int width = 0;
    for (const QVector<double>& row : rows) {
        width = qMax(width, row.size());
    }
    return width;
}

/// What is wrong with omega, looked at for as many bootstrap samples as take no time that
/// one would notice where it comes from their columns.
QStringList covarianceFindings(const endPoint& definition, const Table& samples)
{
    constexpr double products = 2e6;
    const bool comesFromColumns =
        std::any_of(definition.omegaColumns.begin(), definition.omegaColumns.end(),
                    [](const QVector<int>& row) {
                        return std::any_of(row.begin(), row.end(), [](int c) { return c >= 0; });
                    });
    const double most = products / std::pow(definition.numEtas, 3);
    const int looked = comesFromColumns ? int(qBound(1.0, most, double(samples.size()))) : 1;
    QStringList found;
    int faulty = 0;
    for (int sample = 0; sample < looked; ++sample) {
        const QStringList ofSample = checkCovariance(definition.omegaOf(samples.at(sample)));
        found = found.isEmpty() ? ofSample : found;
        faulty += ofSample.isEmpty() ? 0 : 1;
    }
    if (comesFromColumns && faulty > 0) {
        found.first().prepend(QString("In %1 of the first %2 samples: ").arg(faulty).arg(looked));
    }
    return found;
}

} // namespace

/// Tells how each input is checked.
void MainWindow::registerInputChecks()
{
    inputChecks = {
        {ui->_1_le_possibleDoses, [this] { return checkDoses(ui->_1_le_possibleDoses->text()); }},
        {ui->_4_le_probabilities, [this] { return checkLevels(ui->_4_le_probabilities->text()); }},
        {ui->_3_le_lowerBound,
         [this] { return lowerBoundEdit->findings() + checkInterval(lowerBound, upperBound); }},
        {ui->_3_le_upperBound,
         [this] { return upperBoundEdit->findings() + checkInterval(lowerBound, upperBound); }},
        {ui->_1_sb_numSimulations,
         [this] {
             return checkIndividuals(ui->_1_sb_numSimulations->value(),
                                     QThread::idealThreadCount());
         }},
        {ui->_4_cb_useCash, [this] { return cacheFindings(); }},
    };
}

/// Checks the inputs, now and whenever they change, and follows what is current.
void MainWindow::connectFindings()
{
    registerInputChecks();
    for (const InputCheck& check : qAsConst(inputChecks)) {
        renewFindings(check.input);
    }
    for (QLineEdit* edit : {ui->_1_le_possibleDoses, ui->_4_le_probabilities, ui->_3_le_lowerBound,
                            ui->_3_le_upperBound}) {
        connect(edit, &QLineEdit::textChanged, this, [this, edit] { renewFindings(edit); });
    }
    for (QLineEdit* edit : {ui->_3_le_lowerBound, ui->_3_le_upperBound}) {
        connect(edit, &QLineEdit::editingFinished, this, [this] {
            renewFindings(ui->_3_le_lowerBound);
            renewFindings(ui->_3_le_upperBound);
        });
    }
    connect(ui->_1_sb_numSimulations, qOverload<int>(&QSpinBox::valueChanged), this,
            [this] { renewFindings(ui->_1_sb_numSimulations); });
    connect(ui->_4_cb_useCash, &QCheckBox::toggled, this,
            [this] { renewFindings(ui->_4_cb_useCash); });
    for (QTableWidget* table :
         {ui->_1_tw_endPoints, ui->_1_tw_etaDefinition, ui->_1_tw_rawResLabels,
          ui->_2_tw_weightDefinition, ui->_2_tw_relativeWeight}) {
        connect(table, &QTableWidget::currentCellChanged, this,
                [this, table] { makeCurrent(table); });
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        if (now != nullptr && now->window() == this) {
            makeCurrent(now);
        }
    });
    // A menu clears the status bar when it is closed.
    connect(ui->statusBar, &QStatusBar::messageChanged, this, [this](const QString& text) {
        if (text.isEmpty()) {
            showStatus();
        }
    });
    connect(ui->__mainToolBox, &QToolBox::currentChanged, this, [this] {
        renewFindings(ui->_4_cb_useCash);
        makeCurrent(nullptr);
    });
}

/// Checks the imported results, and tells what was found where models are named.
void MainWindow::renewCheckUp()
{
    QStringList names;
    for (const endPoint& definition : qAsConst(endPoints)) {
        names.append(definition.name);
    }
    importCheckUp = checkUp(rawResults, rawResultsHeaders, names, colNumOFV, colNumTHETA1);
    showCheckUp();
    showStatus();
}

/// Shows the check-up on the model selector and on the names of the models.
void MainWindow::showCheckUp()
{
    ui->_0_sb_model->setToolTip(
        plainToolTip(importCheckUp.models.value(ui->_0_sb_model->value()).text));
    // Headings are painted without regard to transparency.
    const QBrush headingTint(blended(palette().color(QPalette::Button)));
    for (int model = 0; model < qMin(endPoints.size(), mostDescribed); ++model) {
        const ModelCheckUp found = importCheckUp.models.value(model);
        for (QTableWidgetItem* item : {ui->_1_tw_endPoints->verticalHeaderItem(model),
                                       ui->_2_tw_weightDefinition->verticalHeaderItem(model),
                                       ui->_2_tw_relativeWeight->horizontalHeaderItem(model)}) {
            if (item != nullptr) {
                item->setToolTip(plainToolTip(found.text));
                item->setData(Qt::BackgroundRole,
                              found.findings.isEmpty() ? QVariant() : headingTint);
            }
        }
    }
}

/// Diagnoses all endpoint and weight expressions anew.
void MainWindow::renewFormulaFindings()
{
    for (int model = 0; model < endPoints.size(); ++model) {
        renewFormulaFindings(ui->_1_tw_endPoints, model);
        renewFormulaFindings(ui->_2_tw_weightDefinition, model);
    }
}

/// Diagnoses a model's expression in one of the two tables.
void MainWindow::renewFormulaFindings(const QTableWidget* table, int model)
{
    QTableWidgetItem* item = table->item(model, 0);
    if (item == nullptr) {
        return;
    }
    const Table rows = rawResults.value(model).value(0);
    const RowColumns columns{widestRow(rows), colNumTHETA1, colNumOFV};
    const auto diagnoses = table == ui->_1_tw_endPoints ? diagnoseEndpoint(item->text(), columns)
                                                        : diagnoseWeight(item->text(), columns);
    showOnItem(item, plainToolTip(lines(diagnoses).join('\n')));
    showStatus();
}

/// Checks the covariance matrix of the selected model.
void MainWindow::renewOmegaFindings()
{
    const endPoint* definition = selectedEndPoint();
    if (definition == nullptr) {
        return;
    }
    const Table rows = rawResults.value(ui->_1_tw_endPoints->currentRow()).value(0);
    // Without data nothing lies beyond a row, and no matrix is used.
    const int width = rows.isEmpty() ? std::numeric_limits<int>::max() : widestRow(rows);
    const QStringList ofMatrix = definition->highestEta > 0 && !rows.isEmpty()
                                     ? covarianceFindings(*definition, rows)
                                     : QStringList();
    const QTableWidget* table = ui->_1_tw_etaDefinition;
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            QTableWidgetItem* item = table->item(row, column);
            showOnItem(item, (checkOmegaElement(item->text(), width) + ofMatrix).join('\n'));
        }
    }
    showStatus();
}

/// Tells of a typed text that the cell did not take over, until something else changes.
void MainWindow::showOmegaFindings(int row, int column, const QString& typed)
{
    const QStringList found = checkOmegaElement(typed, std::numeric_limits<int>::max());
    if (!found.isEmpty()) {
        showOnItem(ui->_1_tw_etaDefinition->item(row, column), plainToolTip(found.join('\n')));
        showStatus();
    }
}

void MainWindow::renewFindings(QWidget* input)
{
    showOnWidget(input, findingsOn(input));
    showStatus();
}

/// What an input's check finds now; of a table, what stands on its current cell.
QStringList MainWindow::findingsOn(const QWidget* input) const
{
    for (const InputCheck& check : inputChecks) {
        if (check.input == input) {
            return check.findings();
        }
    }
    const auto* table = qobject_cast<const QTableWidget*>(input);
    const QTableWidgetItem* item = table == nullptr ? nullptr : table->currentItem();
    return item == nullptr ? QStringList() : plainText(*item).split('\n', Qt::SkipEmptyParts);
}

void MainWindow::makeCurrent(QWidget* input)
{
    statusInput = input;
    showStatus();
}

/// Tells in the status bar the first finding on what was made current last, else on the
/// formula that is current on the page, else what was imported.
void MainWindow::showStatus()
{
    QStringList found = findingsOn(statusInput);
    const QWidget* page = ui->__mainToolBox->currentWidget();
    for (const QTableWidget* formulas : {ui->_1_tw_endPoints, ui->_2_tw_weightDefinition}) {
        if (found.isEmpty() && page->isAncestorOf(formulas)) {
            found = findingsOn(formulas);
        }
    }
    const QString text = found.isEmpty() ? importCheckUp.summary : found.first();
    if (text != ui->statusBar->currentMessage()) {
        ui->statusBar->showMessage(text);
    }
}

/// After a change of the results.
void MainWindow::renewResultFindings()
{
    renewCheckUp();
    renewFormulaFindings();
    renewOmegaFindings();
}

/// After a change of everything.
void MainWindow::renewAllFindings()
{
    renewResultFindings();
    for (const InputCheck& check : qAsConst(inputChecks)) {
        renewFindings(check.input);
    }
}

/// Tells on a table of numbers that it shows only a part of them.
void MainWindow::showFullSize(QTableWidget* table)
{
    const QSize full = csvFullSize(table);
    showOnWidget(table, full.isValid() ? checkShown(full.height(), table->rowCount(), full.width(),
                                                    table->columnCount())
                                       : QStringList());
}

/// Names the data column under every heading of the results and every label of page "1",
/// where the pieces of the heading line may stand apart from their columns.
void MainWindow::nameColumns()
{
    const auto nameItems = [this](int model, int dataSet, const auto& itemOf) {
        const QStringList pieces = rawResultsHeaders.value(model);
        const int count = qMin(pieces.size(), mostDescribed);
        const QStringList descriptions =
            describeColumns(count, columnNames(pieces), rawResults.value(model).value(dataSet),
                            colNumOFV, colNumTHETA1);
        for (int column = 0; column < count; ++column) {
            if (QTableWidgetItem* item = itemOf(column)) {
                item->setToolTip(plainToolTip(descriptions.at(column).left(longestName)));
            }
        }
    };
    nameItems(ui->_0_sb_model->value(), qMax(0, ui->_0_sb_data->value()),
              [this](int column) { return ui->_0_tw_RawResults->horizontalHeaderItem(column); });
    nameItems(ui->_1_tw_endPoints->currentRow(), 0,
              [this](int column) { return ui->_1_tw_rawResLabels->item(0, column); });
}
