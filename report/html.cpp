// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/html.h"

#include "report/chartpainter.h"

namespace {

constexpr int pictureScale = 2; ///< for screens of high resolution and for paper

const char style[] = R"(
body { font-family: "DejaVu Sans", Verdana, Arial, sans-serif; font-size: 14px; line-height: 1.4;
  color: #111; background: #fff; max-width: 56em; margin: 1.5em auto; padding: 0 1em;
  overflow-wrap: anywhere; }
h1 { font-size: 1.7em; margin-bottom: 0.2em; }
h2 { font-size: 1.35em; margin-top: 1.8em; border-bottom: 2px solid #111; }
h3 { font-size: 1.1em; margin-top: 1.4em; }
.subtitle { color: #444; margin: 0.1em 0; }
.statement { font-size: 1.1em; font-weight: bold; border-left: 5px solid #111;
  padding-left: 0.7em; }
.warning { background: #fdf0dc; border: 1px solid #8a5a00; border-left-width: 6px;
  padding: 0.5em 0.7em; }
ul.warning { padding-left: 2em; }
table { border-collapse: collapse; margin: 0.8em 0 1.2em; min-width: 26em; max-width: 100%;
  font-size: 0.92em; }
caption { text-align: left; font-weight: bold; padding-bottom: 0.3em; }
th { text-align: left; border-bottom: 2px solid #111; padding: 0.2em 0.7em 0.2em 0;
  vertical-align: bottom; }
td { border-bottom: 1px solid #bbb; padding: 0.15em 0.7em 0.15em 0; vertical-align: top; }
.r { text-align: right; overflow-wrap: normal; }
td.c { font-family: "DejaVu Sans Mono", monospace; font-size: 0.85em; overflow-wrap: normal; }
figure { margin: 1em 0; }
figcaption { font-weight: bold; }
img { max-width: 100%; height: auto; }
@page { margin: 18mm 16mm; }
@media print { body { max-width: none; margin: 0; padding: 0; font-size: 10pt; }
  h2, h3, caption, figcaption { break-after: avoid; } figure, tr { break-inside: avoid; }
  thead { display: table-header-group; } }
)";

QByteArray escaped(const QString& text)
{
    return text.toHtmlEscaped().toUtf8();
}

/// With places at which long words may be broken.
QByteArray broken(const QStringList& pieces)
{
    QByteArrayList html;
    for (const QString& piece : pieces) {
        html.append(escaped(piece));
    }
    return html.join("<wbr/>");
}

const char* className(Emphasis emphasis)
{
    switch (emphasis) {
    case Emphasis::Statement:
        return " class=\"statement\"";
    case Emphasis::Warning:
        return " class=\"warning\"";
    case Emphasis::None:
        break;
    }
    return "";
}

QByteArray cell(const QByteArray& name, const QStringList& pieces, const QByteArray& attributes)
{
    return '<' + name + attributes + '>' + broken(pieces) + "</" + name + '>';
}

/// An element with a text on a line of its own.
QByteArray element(const QByteArray& name, const QString& text, const QByteArray& attributes = {})
{
    return cell(name, textPieces(text), attributes) + '\n';
}

struct BlockWriter
{
    QByteArray operator()(const ReportHeading& heading) const
    {
        return element(heading.level == 1 ? "h2" : "h3", heading.text);
    }

    QByteArray operator()(const ReportParagraph& paragraph) const
    {
        return element("p", paragraph.text, className(paragraph.emphasis));
    }

    QByteArray operator()(const ReportList& list) const
    {
        QByteArray html = QByteArray("<ul") + className(list.emphasis) + ">\n";
        for (const QString& text : list.texts) {
            html += element("li", text);
        }
        return html + "</ul>\n";
    }

    QByteArray operator()(const ReportTable& table) const
    {
        QByteArray html = "<table>\n" + element("caption", table.caption) + "<thead><tr>";
        for (int column = 0; column < table.headings.size(); ++column) {
            html += cell("th", textPieces(table.headings.at(column)), kind(table, column));
        }
        html += "</tr></thead>\n<tbody>\n";
        for (const QStringList& row : table.rows) {
            html += "<tr>";
            for (int column = 0; column < row.size(); ++column) {
                html += cell("td",
                             isCode(table, column) ? codePieces(row.at(column))
                                                   : textPieces(row.at(column)),
                             kind(table, column));
            }
            html += "</tr>\n";
        }
        return html + "</tbody></table>\n";
    }

    QByteArray operator()(const ReportChart& chart) const
    {
        return QByteArray("<figure>\n<img width=\"") + QByteArray::number(chartWidth)
               + "\" height=\"" + QByteArray::number(chartHeight) + "\" alt=\""
               + escaped(chart.description) + "\" src=\"data:image/png;base64,"
               + chartPng(chart, pictureScale).toBase64() + "\"/>\n"
               + element("figcaption", chart.caption) + "</figure>\n";
    }

    static bool isCode(const ReportTable& table, int column)
    {
        return table.alignment.mid(column, 1) == "c";
    }

    static QByteArray kind(const ReportTable& table, int column)
    {
        const QByteArray letter = table.alignment.mid(column, 1);
        return letter == "r" || letter == "c" ? " class=\"" + letter + '"' : QByteArray();
    }
};

} // namespace

std::optional<QByteArray> htmlReport(const ReportDocument& document, const GoesOnWithShare& goesOn)
{
    QByteArray html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
                      "<meta name=\"viewport\" content=\"width=device-width\"/>\n"
                      + cell("title", {document.title()}, {}) + '\n' + "<style>" + style
                      + "</style>\n</head>\n<body>\n" + element("h1", document.title());
    for (const QString& line : document.subtitle()) {
        html += element("p", line, " class=\"subtitle\"");
    }
    const QVector<ReportBlock>& blocks = document.blocks();
    for (int block = 0; block < blocks.size(); ++block) {
        html += std::visit(BlockWriter(), blocks.at(block));
        if (!goesOn(double(block + 1) / blocks.size())) {
            return std::nullopt;
        }
    }
    return html + "</body>\n</html>\n";
}
