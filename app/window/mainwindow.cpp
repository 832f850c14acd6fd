// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/mainwindow.h"

#include "app/aplot.h"
#include "app/charts/histogramview.h"
#include "app/findings/findingsview.h"
#include "app/tables/editing.h"
#include "app/widgets/boundedit.h"
#include "app/widgets/droptarget.h"
#include "app/widgets/heldinput.h"
#include "ui_mainwindow.h"

#include <QScrollArea>

namespace {

constexpr int weightPage = 3;

/// The column of true models in the table of page "5".
constexpr int trueModelColumn = 0;

/// Point size in the crowded parts of the pages, where the desktop's font is larger.
constexpr double compactPointSize = 9.0;

/// Pixels for the names of models next to narrow tables.
constexpr int widestModelName = 100;

QFont compactFont(QFont font)
{
    if (font.pointSizeF() > compactPointSize) {
        font.setPointSizeF(compactPointSize);
    }
    return font;
}

void setAxisFonts(QCPAxis* axis, const QFont& font)
{
    axis->setLabelFont(font);
    axis->setTickLabelFont(font);
}

/// Narrows the letters until the text fits into the label's greatest width.
void fitText(QLabel* label)
{
    QFont font = label->font();
    for (int stretch = 100; stretch > 50; stretch -= 5) {
        font.setStretch(stretch);
        if (QFontMetrics(font).horizontalAdvance(label->text()) < label->maximumWidth()) {
            break;
        }
    }
    label->setFont(font);
}

QList<QAbstractButton*> pageTitles(const QToolBox* pages)
{
    return pages->findChildren<QAbstractButton*>("qt_toolbox_toolboxbutton",
                                                 Qt::FindDirectChildrenOnly);
}

/// Puts the titles behind the last input in the order of the tab key. They begin with the next
/// page's and end with that of the current page, from where the key reaches its first input.
/// The keyboard, if it is on a title, moves to that of the current page.
void orderTitles(const QToolBox* pages, QWidget* lastInput)
{
    const QList<QAbstractButton*> titles = pageTitles(pages);
    QWidget* before = lastInput;
    for (int step = 1; step <= titles.size(); ++step) {
        QAbstractButton* title = titles.at((pages->currentIndex() + step) % titles.size());
        QWidget::setTabOrder(before, title);
        before = title;
    }
    if (titles.contains(qobject_cast<QAbstractButton*>(QApplication::focusWidget()))) {
        before->setFocus(Qt::OtherFocusReason);
    }
}

/// Lets the user write true models only, and shows which row is which data set.
void setUpResultTables(const Ui_MainWindow& ui)
{
    for (QTableWidget* table : {ui._0_tw_RawResults, ui._2_tw_relativeWeight, ui._4_tw_doseChoice,
                                ui._5_tw_Summary, ui._5_tw_aveUnderEstOverEst}) {
        makeReadOnly(table);
    }
    letEditOnly(ui._5_tw_trueModelTMED, trueModelColumn);
    // The two columns share the table's width; those that a file may add keep their own.
    QHeaderView* header = ui._5_tw_trueModelTMED->horizontalHeader();
    for (int column = 0; column < header->count(); ++column) {
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    }
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    // A bound that was never edited counts as an empty text does.
    , upperBound(upperSubstitute.value)
    , lowerBound(lowerSubstitute.value)
    , colNumOFV(20)
    , colNumTHETA1(21)
    , colNumThird(22)
    , plotColor(153, 0, 0, 255)
    , plotColorLight(153, 0, 0, 100)
    , ui(new Ui_MainWindow)
{
    ui->setupUi(this);
    heldInput = new HeldInput(this);
    fitFonts();
    unifyNumbers();
    connectPlots();
    openKeyboardWays();
    addExports();
    acceptDrops();
    setUpResultTables(*ui);
    describeTables();
    connect(ui->actionSave, &QAction::triggered, this, &MainWindow::saveModels);
    connect(ui->actionOpen, &QAction::triggered, this, &MainWindow::loadModels);
    lowerBoundEdit = new BoundEdit(ui->_3_le_lowerBound, lowerSubstitute);
    upperBoundEdit = new BoundEdit(ui->_3_le_upperBound, upperSubstitute);
    connect(ui->_1_cb_numEtas, &QSpinBox::editingFinished, this, [this] { typedOmega.end(); });

    ui->_3_cp_epDistribution->hide();
    ui->_3_lb_indpVar->hide();
    ui->_3_sl_doseSlider->hide();
    ui->__mainToolBox->setCurrentIndex(0);
    refresh__1_tw_etaDefinition();
    connectFindings();
}

MainWindow::~MainWindow()
{
    hide(); // an open editor hands over its text, as long as there is somebody to take it
    delete findings;
    delete ui;
}

/// Lets the tab key reach the titles of the pages behind the inputs of the current page, but
/// no frame around them, which a click reaches.
void MainWindow::openKeyboardWays()
{
    for (QAbstractButton* title : pageTitles(ui->__mainToolBox)) {
        title->setFocusPolicy(Qt::TabFocus);
    }
    for (auto* frame :
         ui->__mainToolBox->findChildren<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly)) {
        frame->setFocusPolicy(Qt::ClickFocus);
    }
    orderTitles(ui->__mainToolBox, ui->_4_pb_compTruth);
}

/// Makes texts readable where the layout's limits leave little room for them.
void MainWindow::fitFonts()
{
    fitText(ui->label_2);
    const QFont font = compactFont(ui->_1_tw_endPoints->font());
    for (QWidget* widget : QVector<QWidget*>{
             ui->_1_tw_endPoints, ui->_1_lb_etaText, ui->_1_cb_numEtas, ui->_1_tw_etaDefinition,
             ui->_1_cb_iivEndPoint, ui->_1_sb_numSimulations, ui->label_5, ui->_1_tw_rawResLabels,
             ui->_2_tw_weightDefinition, ui->_5_tw_trueModelTMED, ui->_5_tw_Summary,
             ui->_5_tw_aveUnderEstOverEst, ui->statusBar}) {
        widget->setFont(font);
        if (QTableWidget* table = qobject_cast<QTableWidget*>(widget)) {
            table->horizontalHeader()->setFont(font);
        }
    }
    QFont narrowFont = font;
    narrowFont.setStretch(QFont::SemiCondensed);
    ui->_5_tw_aveUnderEstOverEst->horizontalHeader()->setFont(narrowFont);
    for (QCustomPlot* plot : findChildren<QCustomPlot*>()) {
        setAxisFonts(plot->xAxis, font);
        setAxisFonts(plot->yAxis, font);
    }
    // A long model name must leave room for the expression next to it.
    ui->_1_tw_endPoints->verticalHeader()->setMaximumWidth(widestModelName);
    ui->_2_tw_weightDefinition->verticalHeader()->setMaximumWidth(2 * widestModelName);
    ui->__lb_directory->setMaximumHeight(2 * ui->__lb_directory->fontMetrics().lineSpacing());
}

/// Lets spin boxes and charts write numbers as tables do, in every language: 1000.5, in these
/// digits.
void MainWindow::unifyNumbers()
{
    for (QWidget* widget : findChildren<QWidget*>()) {
        if (qobject_cast<QAbstractSpinBox*>(widget) != nullptr
            || qobject_cast<QCustomPlot*>(widget) != nullptr) {
            widget->setLocale(QLocale::c());
        }
    }
}

/// Lets files that are dropped on the page be imported as though chosen by its buttons, and
/// a project be opened.
void MainWindow::acceptDrops()
{
    new DropTarget(ui->page_6, [this](DroppedKind kind, const QStringList& paths) {
        switch (kind) {
        case DroppedKind::ResultFiles:
            importFiles(paths);
            break;
        case DroppedKind::Folder:
            importFolder(paths.first());
            break;
        case DroppedKind::Project:
            openProject(paths.first());
            break;
        case DroppedKind::Unknown:
            break;
        }
    });
}

/// Makes the two histograms draggable and zoomable.
void MainWindow::connectPlots()
{
    QCustomPlot* ofResults = ui->_0_cp_rawResHistoGram;
    QCustomPlot* ofDoses = ui->_4_cp_doseChoiceDistribution;
    const HistogramView::Look look{thickPen(plotColor), QBrush(plotColorLight)};
    resultsHistogram =
        new HistogramView(ofResults, look, [this] { refresh_0_cp_rawResHistoGram(); });
    doseHistogram = new HistogramView(ofDoses, look, [this] { refresh_4_tw_doseChoice(); });
    connect(ofResults, &QCustomPlot::mousePress, this, &MainWindow::mousePressDE);
    connect(ofResults, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheelDE);
    connect(ofDoses, &QCustomPlot::mousePress, this, &MainWindow::mousePress_4_cp_doseDist);
    connect(ofDoses, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheel_4_cp_doseDist);
}

void MainWindow::contextMenuEvent(QContextMenuEvent* /*event*/) {}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && findings != nullptr) {
        changed(Change::Palette);
    }
}

void MainWindow::on___mainToolBox_currentChanged(int index)
{
    if (index == weightPage) {
        refresh_2_tw_weightDefinition();
    }
    orderTitles(ui->__mainToolBox, ui->_4_pb_compTruth);
}

// The choices of page "3" take effect with the next "reCalculate".

void MainWindow::on__3_cb_dataNumber_valueChanged(int /*dataSet*/) {}

void MainWindow::on__3_cb_aveORselect_currentIndexChanged(int /*index*/) {}

void MainWindow::on__3_cb_indOFVone_currentIndexChanged(int /*index*/) {}

// The doses are read on every change of their text.

void MainWindow::on__1_le_possibleDoses_textEdited(const QString& /*text*/) {}

void MainWindow::on__1_le_possibleDoses_editingFinished() {}
