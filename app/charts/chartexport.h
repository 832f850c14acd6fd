// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_CHARTS_CHARTEXPORT_H
#define VELMORA_APP_CHARTS_CHARTEXPORT_H

#include "app/charts/chartdata.h"
#include "app/widgets/exportmenu.h"

#include <memory>

/// How a chart is exported.
struct ChartExportSettings
{
    ChartReading reading;
    QString fileName;          ///< offered, without suffix
    std::function<void()> fit; ///< shows all data; fitChart where there is none
    /// The text below that of a point under the mouse; may be missing.
    std::function<QStringList()> remarks;
    ChartNote note; ///< may be missing
};

/// The chart's context menu, and its tooltip for the point under the mouse. Owned by the chart,
/// whose ranges a right click no longer reaches.
class ChartExport : public ExportMenu
{
public:
    /// the shared entries end the menu.
    ChartExport(QCustomPlot* chart, const ChartExportSettings& how, const QList<QAction*>& shared);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::shared_ptr<QCustomPlot> toExport() const;
    void addPictureEntries();
    void addDataEntries();

    QCustomPlot* plot;
    ChartExportSettings settings;
};

#endif
