// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WINDOW_MAINWINDOW_H
#define VELMORA_APP_WINDOW_MAINWINDOW_H

#include "analysis/checkup/checkup.h"
#include "analysis/checkup/studycheck.h"
#include "analysis/endpointcache.h"
#include "analysis/results.h"
#include "app/window/changes.h"
#include "app/window/sources.h"
#include "model/typedomega.h"

#include <QColor>
#include <QMainWindow>
#include <QStringList>
#include <QVector>

#include <optional>

class BoundEdit;
class ExportMenu;
class FindingsView;
class HeldInput;
class HistogramView;
class QAction;
class QLineEdit;
class QTableWidget;
class QTableWidgetItem;
class Ui_MainWindow;
class ProgressLoop;
class BatchSettings;
enum class CertaintyTable;
struct DecodedProject;
struct ProjectItems;
struct ReportInputs;
struct StudySource;

/// The main window: owns the whole state of the analysis and handles the pages.
///
/// Everything runs on the GUI thread; only the evaluation of simulated individuals is spread over
/// the thread pool, and returns before the slot goes on. Long loops show a modal progress dialog
/// and stop when it is aborted; what is done so far stays.
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
    void changeEvent(QEvent* event) override;

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

    HistogramView* resultsHistogram = nullptr; ///< of page "0"
    HistogramView* doseHistogram = nullptr;    ///< of page "4"
    BoundEdit* lowerBoundEdit = nullptr;
    BoundEdit* upperBoundEdit = nullptr;
    FindingsView* findings = nullptr;
    HeldInput* heldInput = nullptr; ///< while the typical curve is calculated
    ResultsSource source;
    SimulationSource simulationSource;
    QStringList unreadTruth; ///< the last file of true models or MEDs if it could not be read
    SourceFile truthFile;    ///< that file
    TextSources texts;
    TypedOmega typedOmega; ///< while a number of ETAs is typed
    /// The other results that the pages show, each with its provenance; without the chosen doses
    /// and their levels, which results() adds.
    StudyResults shown;
    EndpointCache cache{doseChoiceCash};
    QVector<Heading> headings;       ///< [model], what rawResultsHeaders say
    mutable quint64 fingerprint = 0; ///< of rawResults; 0 until it is asked for
    ImportCheckUp importCheckUp;     ///< of rawResults
    UsableWeights usableWeights;
    bool isOpening = false; ///< while the items of a project are applied

    // What results depend on, and what a change of it touches
    Study study() const;
    Study studyToKeep() const;
    CurrentInputs currentInputs() const;
    StudyResults results() const;
    QStringList boundNotes() const;
    QString fileName(int model) const;
    void changed(Change change, int row = -1);
    void renewView(View view, int row);
    void resultsNotFound();
    void showModels();
    void showModelNames();
    void renewTypicalDRPlot();

    // Page "-1": import
    static constexpr char importLabel[] = "Importing Simulation Data...";
    static constexpr char abortImportText[] = "Abort Import";
    void importFiles(QStringList paths);
    void importFolder(const QString& directory);
    void clearResults(const QString& place);
    QString fileNameTemplate(int model, const QString& dataSet) const;
    QString rawResultsFileName(const QString& directory, int model, int dataSet) const;
    void setModelCount(int count);
    void readHeading(int model, const QString& path);
    void readDataSet(int model, const QString& path);
    void readFirstModel(const QString& directory, ProgressLoop& progress);
    void readFurtherModel(const QString& directory, int model, int dataSetCount,
                          ProgressLoop& progress);
    void defineImported(const QStringList& modelNames);
    void readColumnNumber(QLineEdit* edit, const QString& text, int& column,
                          int endPoint::*endPointColumn);

    // Page "0": bootstrap results
    void refresh_0_tw_RawResults();
    void refresh_0_cp_rawResHistoGram();

    // Page "1": endpoint definition
    void refresh__1_tw_etaDefinition();
    void refresh_1_cp_typicalDRPlot();
    void refresh_1_tw_rawResLabels();
    std::optional<QVector<double>> calculateTypicalCurve(int model, const QVector<double>& row);
    void clearTypicalCurve();
    endPoint* selectedEndPoint();
    void readEndPointExpression(int row);

    // Page "2": weights
    void refresh_2_tw_weightDefinition();
    void refresh_2_tw_relativeWeight();
    void setWeightColumns(int modelCount);
    /// Relative weights of a data set, [sample][model]; empty if it does not exist.
    QVector<QVector<double>> calculate_relativeWeight(int dataSet);
    /// Model selected for each bootstrap sample of a data set, -1 for none.
    QVector<int> make_ModelSelection(int dataSet);

    // Page "3": probability of achieving the target, in percent per dose
    void refresh_3_cp_PoS();
    /// With a progress dialog the user may abort it, which leaves the curve empty.
    QVector<double> calculate_PoS(int dataSet, ProgressLoop* progress = nullptr,
                                  Evaluation* evaluation = nullptr);
    QVector<double> calculate_PoS_aux_modelSelect(QVector<QVector<QVector<double>>> endpoints);
    QVector<double> calculate_PoS_aux_modelAve(QVector<QVector<QVector<double>>> endpoints,
                                               QVector<QVector<double>> weights);

    // Page "4": dose selection
    QVector<double> find_dose(QVector<double> pos, QVector<double> targets);
    int find_dose(QVector<double> pos, double target);
    QVector<double> find_dose(QVector<double> pos);
    void refresh_4_tw_doseChoice();

    // Certainty of results
    void resampleDoses();
    void describeTables();
    void addCertaintyEntries(ExportMenu* menu, bool ofCurve);
    void copyCurveCertainty(CertaintyTable table);
    void copyDoseCertainty(CertaintyTable table);
    void saveEndpoints(bool ofCurve);

    // Page "5": comparison with the truth
    Table trueRows() const;
    QStringList trueModelTexts() const;
    void readSimulationModels(const QStringList& paths);
    bool readTrueMeds();
    bool computeTheoreticalMeds();
    bool readTrueModelTable();
    void showTheoreticalMeds(int rowCount);
    void drawComparison();

    // Menu "File"
    void saveProject(const QString& path);
    void openProject(const QString& path);
    void showFileError(const QString& error);
    ProjectItems projectItems() const;
    void loadResults(const DecodedProject& project);
    void loadEndPoints(const DecodedProject& project, const Study& restored);
    void loadWeights(const DecodedProject& project);
    void loadTarget(const DecodedProject& project);
    void loadDoseChoice(const DecodedProject& project);
    void keepOrigins(const DecodedProject& project);

    // Findings on data and inputs
    void connectFindings();
    void watchInputs();
    void watchResults();
    void renewFindings(View view, int row);
    void renewMarks();
    void renewCheckUp();
    void showCheckUp();
    QVector<int> allModels() const;
    QStringList formulaFindings(const Study& now, const QTableWidget* table, int model) const;
    void renewFormulaFindings(const QTableWidget* table, const QVector<int>& models);
    void renewOmegaFindings();
    void nameColumns();
    QStringList allFindings() const;

    // Export
    void addExports();
    void addTableExports(const QList<QAction*>& shared);
    void addChartExports(const QList<QAction*>& shared);
    StudySource studySource() const;
    QString analysisSummary() const;
    QStringList addTruth(BatchSettings& settings) const;
    QString batchCommand() const;
    ReportInputs reportInputs() const;
    std::optional<QByteArray> writeReport(const QString& suffix);
    void saveReport();

    // Appearance
    void openKeyboardWays();
    void fitFonts();
    void unifyNumbers();
    void acceptDrops();
    void connectPlots();
};

#endif
