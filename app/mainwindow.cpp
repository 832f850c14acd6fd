// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/mainwindow.h"

#include "ui_mainwindow.h"

namespace {

constexpr int weightPage = 3;

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    // A bound that was never edited counts as an empty text does.
    , upperBound(10.0)
    , lowerBound(-10.0)
    , colNumOFV(20)
    , colNumTHETA1(21)
    , colNumThird(22)
    , plotColor(153, 0, 0, 255)
    , plotColorLight(153, 0, 0, 100)
    , ui(new Ui_MainWindow)
{
    ui->setupUi(this);
    connectPlots();
    connect(ui->actionSave, &QAction::triggered, this, &MainWindow::saveModels);
    connect(ui->actionOpen, &QAction::triggered, this, &MainWindow::loadModels);
    connect(ui->_3_le_lowerBound, &QLineEdit::textChanged, this,
            [this] { lowerBoundPlaced = false; });
    connect(ui->_3_le_upperBound, &QLineEdit::textChanged, this,
            [this] { upperBoundPlaced = false; });

    ui->_3_cp_epDistribution->hide();
    ui->_3_lb_indpVar->hide();
    ui->_3_sl_doseSlider->hide();
    ui->__mainToolBox->setCurrentIndex(0);
    refresh__1_tw_etaDefinition();
}

MainWindow::~MainWindow()
{
    delete ui;
}

void MainWindow::contextMenuEvent(QContextMenuEvent* /*event*/) {}

void MainWindow::on___mainToolBox_currentChanged(int index)
{
    if (index == weightPage) {
        refresh_2_tw_weightDefinition();
    }
}

void MainWindow::saveModels() {}

void MainWindow::loadModels() {}

void MainWindow::on__4_pb_compTruth_clicked() {}

void MainWindow::on__5_pb_importSimRawRes_clicked() {}

void MainWindow::on__5_pb_simTrueModel_clicked() {}

// The choices of page "3" take effect with the next "reCalculate".

void MainWindow::on__3_cb_dataNumber_valueChanged(int /*dataSet*/) {}

void MainWindow::on__3_cb_aveORselect_currentIndexChanged(int /*index*/) {}

void MainWindow::on__3_cb_indOFVone_currentIndexChanged(int /*index*/) {}

// The doses are read on every change of their text.

void MainWindow::on__1_le_possibleDoses_textEdited(const QString& /*text*/) {}

void MainWindow::on__1_le_possibleDoses_editingFinished() {}
