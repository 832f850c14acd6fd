// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_STUDYWITHETAS_H
#define VELMORA_TESTS_SUPPORT_STUDYWITHETAS_H

#include "tests/support/randomnumbers.h"
#include "tests/support/windowtest.h"

/// A study whose results depend on every input, and these results as a user sees them.
class StudyWithEtas : public WindowTest
{
protected:
    using Results = QMap<QString, QStringList>;

    /// A new window with three data sets of two models that simulate individuals. In one
    /// sample a model has no weight.
    void defineStudy()
    {
        openWindow();
        RawResults imported(2, QVector<Table>(3));
        for (int i = 0; i < 36; ++i) {
            const double ofv = i == 31 ? 9e3 : i * 7 % 11 / 2.0;
            imported[i % 2][i / 12].append({ofv, 0.5 + i * 5 % 13 / 10.0, i * 3 % 7 / 5.0});
        }
        importStudy(imported);
        define("THETA1*DOSE+ETA1", "THETA1+DOSE*THETA2+ETA1", "0:0.5:5", "1.2");
        for (const int model : {1, 0}) {
            user::clickCell(reach<QTableWidget>(endpoints), model, 0);
            edit(omega, 0, 0, "0.8");
        }
        type("_1_sb_numSimulations", "8");
        choose("_3_cb_aveORselect", 0);
        choose("_3_cb_indOFVone", 1);
        type("_4_le_probabilities", "5:10:95");
    }
    void importSimulationModels()
    {
        QStringList paths;
        for (const double theta : {0.7, 0.9, 1.6}) {
            paths += files.writeRawResults(QString("simulation%1.csv").arg(paths.size()),
                                           {{3, theta, theta - 0.3}});
        }
        pressAndAnswer("_5_pb_importSimRawRes", paths);
        for (const int dataSet : {0, 1, 2}) {
            edit("_5_tw_trueModelTMED", dataSet, 0, dataSet == 1 ? "1" : "0");
        }
    }

    /// Presses buttons; the same random numbers follow every time.
    void calculate(std::initializer_list<const char*> buttons)
    {
        for (const char* button : buttons) {
            reach<QWidget>(button);
            seedRandomNumbers(1);
            press(button);
        }
    }

    QStringList numbers(const char* plot) const
    {
        QStringList texts;
        for (int graph = 0; graph < the<QCustomPlot>(plot)->graphCount(); ++graph) {
            for (const double value : curve(plot, graph)) {
                texts.append(QString::number(value, 'g', 17));
            }
        }
        return texts;
    }

    /// What the pages show, with the typical curve drawn again for model 0.
    Results results() const
    {
        user::clickCell(reach<QTableWidget>(endpoints), 1, 0);
        seedRandomNumbers(1);
        user::clickCell(the<QTableWidget>(endpoints), 0, 0);
        the<QAction>("actionCopySummary")->trigger();
        const QString summary = QApplication::clipboard()->text();
        return {{"typical", numbers("_1_cp_typicalDRPlot")},
                {"weights", rows("_2_tw_relativeWeight")},
                {"curve", numbers("_3_cp_PoS")},
                {"doses", rows("_4_tw_doseChoice")},
                {"true", rows("_5_tw_trueModelTMED")},
                {"truth", rows("_5_tw_Summary") + numbers("_5_cp_truthVisualization")},
                {"summary", summary.section("\nColumns:", 1).split('\n')}};
    }
    /// The names of results that differ, except the summary, which has the inputs, too.
    static QString differing(const Results& first, const Results& second)
    {
        QStringList names;
        for (const QString& name : first.keys()) {
            if (name != "summary" && first[name] != second[name]) {
                names.append(name);
            }
        }
        return names.join(' ');
    }
};

#endif
