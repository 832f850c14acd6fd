// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WINDOW_MAINWINDOW_H
#define VELMORA_APP_WINDOW_MAINWINDOW_H

#include "analysis/checkup/checkup.h"
#include "analysis/truth.h"
#include "model/endpoint.h"
#include "model/tables.h"

#include <QColor>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

class BoundEdit;
class HistogramView;
class QAction;
class QCustomPlot;
class QLineEdit;
class QPen;
class QTableWidget;
class QTableWidgetItem;
class Ui_MainWindow;
class ProgressLoop;
struct AnalysisSummary;
struct DecodedProject;
struct ProjectItems;

/// The main window: owns the whole analysis state and serves the pages.
///
/// Everything runs on the GUI thread; only the evaluation of simulated individuals is
/// spread over the thread pool, and returns before the slot goes on. Long loops show a
/// modal progress dialog and stop when it is aborted, with what was done kept.
///
/// The state may be uneven: an aborted import leaves models without data sets or without
/// definition, and rows differ in length. Every reader checks before it indexes.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

protected:
    /// Empty: the window has no context menu.
    void contextMenuEvent(QContextMenuEvent* event) override;

private slots:
    void on___pb_import_clicked();
    void on__0_sb_model_valueChanged(int model);
    void on__0_sb_data_valueChanged(int dataSet);
    void on___mainToolBox_currentChanged(int index);
    void on__2_tw_weightDefinition_cellChanged(int row, int column);
    void on__2_cb_logScale_stateChanged(int state);
    void on__2_sb_dataNumber_valueChanged(int dataSet);
    void on__0_tw_RawResults_currentCellChanged(int currentRow, int currentColumn, int previousRow,
                                                int previousColumn);
    void mouseWheelDE();
    void mousePressDE();
    void mouseWheel_4_cp_doseDist();
    void mousePress_4_cp_doseDist();
    void saveModels();
    void loadModels();
    void on__1_le_possibleDoses_textChanged(const QString& text);
    void on__3_sl_doseSlider_valueChanged(int value);
    void on__3_cb_dataNumber_valueChanged(int dataSet);
    void on__3_cb_aveORselect_currentIndexChanged(int index);
    void on__3_cb_indOFVone_currentIndexChanged(int index);
    void on__4_pb_startCalculation_clicked();
    void on__4_pb_compTruth_clicked();
    void on___pb_importFbF_clicked();
    void on__1_tw_endPoints_cellChanged(int row, int column);
    void on__m1_le_colNumOFV_textEdited(const QString& text);
    void on__m1_le_colNumTHETA1_textEdited(const QString& text);
    void on__1_tw_endPoints_currentCellChanged(int currentRow, int currentColumn, int previousRow,
                                               int previousColumn);
    void on__1_tw_endPoints_itemChanged(QTableWidgetItem* item);
    void on__3_pb_calculatePoS_clicked();
    void on__3_le_lowerBound_editingFinished();
    void on__3_le_upperBound_editingFinished();
    void on__1_tw_etaDefinition_cellChanged(int row, int column);
    void on__1_cb_numEtas_valueChanged(int count);
    void on__1_tw_etaDefinition_currentCellChanged(int currentRow, int currentColumn,
                                                   int previousRow, int previousColumn);
    void on__1_cb_iivEndPoint_currentIndexChanged(int index);
    void on__5_pb_importSimRawRes_clicked();
    void on__5_pb_simTrueModel_clicked();
    void on__4_tw_doseChoice_currentCellChanged(int currentRow, int currentColumn, int previousRow,
                                                int previousColumn);
    void on__1_sb_numSimulations_valueChanged(int count);
    void on__1_le_possibleDoses_textEdited(const QString& text);
    void on__1_le_possibleDoses_editingFinished();
    void on__4_pb_clearCash_clicked();

private:
    RawResults rawResults;
    QVector<Table> simRawResults;              ///< of the simulation models, [file][sample][column]
    QVector<QStringList> simRawResultsHeaders; ///< [file]
    Table truthComparison;                     ///< [dataSet][value]
    QVector<double> trueMEDs;                  ///< per simulated data set, in dose units
    QVector<int> trueModelIndices;             ///< per simulated data set, 0-based
    Table doseChoice;                       ///< MED in dose units, [dataSet][level]; NaN for none
    QStringList doseChoiceLabels;           ///< the levels as column labels
    QVector<double> doseChoiceVector;       ///< target probability levels in percent, ascending
    QVector<QStringList> rawResultsHeaders; ///< [model]
    QVector<endPoint> endPoints;            ///< [model]
    QVector<double> possibleDoses; ///< candidate doses, ascending; axis of per-dose results
    double upperBound;             ///< of the target interval, included
    double lowerBound;             ///< of the target interval, excluded
    int colNumOFV;                 ///< 1-based
    int colNumTHETA1;              ///< 1-based
    int colNumThird;               ///< 1-based
    QColor plotColor;
    QColor plotColorLight;
    QVector<QVector<Table>> doseChoiceCash; ///< endpoints, [dataSet][model][sample][dose]
    Ui_MainWindow* ui;

    /// Names of the files that the models were imported from, without folders and with * for
    /// the number of the data set, [model]; empty after Open.
    QStringList sourceFiles;
    QString doseChoiceOrigin; ///< by which choices doseChoice was made, for the summary
    /// What page "5" tells, which later doses leave as it is: the comparison, [level], and its
    /// levels in percent.
    QVector<LevelComparison> comparison;
    QVector<double> comparedLevels;
    HistogramView* resultsHistogram = nullptr; ///< of page "0"
    HistogramView* doseHistogram = nullptr;    ///< of page "4"
    BoundEdit* lowerBoundEdit = nullptr;
    BoundEdit* upperBoundEdit = nullptr;

    /// What the endpoints of a data set in the cache were computed from, as a hash.
    struct CacheOrigin
    {
        QByteArray endpoints;
        QByteArray weights; ///< these decide which endpoints were left out
    };
    QVector<CacheOrigin> cacheOrigins; ///< [dataSet]
    int resultsVersion = 0;            ///< counts the imports and loads
    QString resultsPlace;              ///< the directory or project that they came from
    // The version of the results that these were calculated from.
    int curveVersion = 0; ///< the probability curve shown
    int doseChoiceVersion = 0;
    int comparisonVersion = 0;

    /// An input other than a table cell, and what there is to say about it.
    struct InputCheck
    {
        QWidget* input;
        std::function<QStringList()> findings;
    };
    QVector<InputCheck> inputChecks;
    ImportCheckUp importCheckUp;   ///< of rawResults
    QPointer<QWidget> statusInput; ///< what was made current last

    Study study() const;

    // Page "-1": import
    void importFiles(QStringList paths);
    void importFolder(const QString& directory);
    void acceptDrops();
    void clearResults();
    QString rawResultsFileName(const QString& directory, int model, int dataSet) const;
    QString fileNameTemplate(int model, const QString& dataSet) const;
    void readFirstModel(const QString& directory, ProgressLoop& progress);
    void readFurtherModel(const QString& directory, int model, int dataSetCount,
                          ProgressLoop& progress);
    static QStringList numberedModelNames(int count);
    void showNotFound();
    void showImport(const QStringList& modelNames);
    void showModels(const QStringList& modelNames);
    void showDataSetSelectors(bool visible);
    void setDataSetMaximum(int maximum);
    void resizeEndPoints(const QStringList& modelNames);
    void showModelNames();
    void readColumnNumber(QLineEdit* edit, const QString& text, int& column,
                          int endPoint::*endPointColumn);

    // Page "0": bootstrap results
    void refresh_0_tw_RawResults();
    void refresh_0_cp_rawResHistoGram();

    // Page "1": endpoint definition
    void refresh__1_tw_etaDefinition();
    void refresh_1_cp_typicalDRPlot();
    void renewTypicalDRPlot();
    void refresh_1_tw_rawResLabels();
    endPoint* selectedEndPoint();
    void readEndPointExpression(int row);
    int shownPopulationSummary() const;
    void bringEndPointsUpToDate();

    // Page "2": weights
    void refresh_2_tw_weightDefinition();
    void refresh_2_tw_relativeWeight();
    void setWeightColumns(int modelCount);
    void renewRelativeWeights();
    /// Relative weights of a data set, [sample][model]; empty if it does not exist.
    QVector<QVector<double>> calculate_relativeWeight(int dataSet);
    /// Model selected for each bootstrap sample of a data set, -1 for none.
    QVector<int> make_ModelSelection(int dataSet);

    // Page "3": probability of achieving the target, in percent per dose
    void refresh_3_cp_PoS();
    /// With a progress dialog the user may give it up, which leaves the curve empty.
    QVector<double> calculate_PoS(int dataSet, ProgressLoop* progress = nullptr);
    QVector<double> calculate_PoS_aux_modelSelect(QVector<QVector<QVector<double>>> endpoints);
    QVector<double> calculate_PoS_aux_modelAve(QVector<QVector<QVector<double>>> endpoints,
                                               QVector<QVector<double>> weights);
    std::optional<QVector<Table>> selectedEndpoints(int dataSet, ProgressLoop* progress);
    std::optional<QVector<Table>> averagedEndpoints(int dataSet, const Table& weights,
                                                    ProgressLoop* progress);
    QVector<Table>* cacheEntry(int dataSet);
    void keepInCache(int dataSet, const QVector<Table>& endpoints);
    CacheOrigin cacheOrigin() const;
    QStringList cacheFindings();
    QVector<int> selectionOf(int dataSet);
    bool isSelecting() const;
    bool usesIndividualOfv() const;
    QString doseName();

    // Page "4": dose selection
    QVector<double> find_dose(QVector<double> pos, QVector<double> targets);
    int find_dose(QVector<double> pos, double target);
    QVector<double> find_dose(QVector<double> pos);
    void refresh_4_tw_doseChoice();

    // Page "5": comparison with the truth
    int simulationCount() const;
    void readTrueMeds();
    bool computeTheoreticalMeds();
    bool readTrueModelTable();
    void showTheoreticalMeds();
    void setTheoreticalMed(int row, double dose);
    void drawComparison();

    // Menu "File"
    void openProject(const QString& path);
    void showFileError(const QString& error);
    ProjectItems projectItems() const;
    void loadResults(const DecodedProject& project);
    void loadEndPoints(const DecodedProject& project);
    void loadWeights(const DecodedProject& project);
    void loadTarget(const DecodedProject& project);
    void loadDoseChoice(const DecodedProject& project);

    // Findings: what the user should know about data and inputs
    void registerInputChecks();
    void connectFindings();
    void renewCheckUp();
    void showCheckUp();
    void renewFormulaFindings();
    void renewFormulaFindings(const QTableWidget* table, int model);
    void renewOmegaFindings();
    void showOmegaFindings(int row, int column, const QString& typed);
    void renewFindings(QWidget* input);
    void renewResultFindings();
    void renewAllFindings();
    QStringList findingsOn(const QWidget* input) const;
    void showFullSize(QTableWidget* table);
    void makeCurrent(QWidget* input);
    void showStatus();
    void nameColumns();

    // What leaves the window
    void addExports();
    void addTableExports(QAction* summary);
    void addChartExports(QAction* summary);
    AnalysisSummary analysisSummary();
    QString choicesText() const;
    void addResults(AnalysisSummary& summary);

    // Looks
    void openKeyboardWays();
    void fitFonts();
    static void fitColumns(QTableWidget* table, const QString& widestNumber = "-1.23457e-308");
    void connectPlots();
    QPen curvePen() const;
};

#endif
