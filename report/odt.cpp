// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/odt.h"

#include "report/chartpainter.h"
#include "report/columns.h"
#include "report/odtstyles.h"
#include "report/zip.h"

namespace {

constexpr char mimeType[] = "application/vnd.oasis.opendocument.text";
constexpr char xmlHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr double bodyWidth = 17.4; ///< cm
constexpr int pictureScale = 3;    ///< for paper

QByteArray escaped(const QString& text)
{
    return text.toHtmlEscaped().toUtf8();
}

QByteArray centimetres(double length)
{
    return QByteArray::number(length, 'f', 3) + "cm";
}

QByteArray paragraph(const char* style, const QStringList& lines)
{
    QByteArrayList texts;
    for (const QString& line : lines) {
        texts.append(escaped(line));
    }
    return QByteArray("<text:p text:style-name=\"") + style + "\">"
           + texts.join("<text:line-break/>") + "</text:p>\n";
}

QByteArray paragraph(const char* style, const QString& text)
{
    return paragraph(style, QStringList(text));
}

const char* styleOf(Emphasis emphasis)
{
    switch (emphasis) {
    case Emphasis::Statement:
        return "Statement";
    case Emphasis::Warning:
        return "Warning";
    case Emphasis::None:
        break;
    }
    return "Text_20_body";
}

/// The body of the text, with its styles and pictures.
struct BodyWriter
{
    QByteArray body;
    QByteArray styles; ///< of tables and their columns
    QVector<QByteArray> pictures;
    int tables = 0;

    void operator()(const ReportHeading& heading)
    {
        const QByteArray level = QByteArray::number(heading.level);
        body += "<text:h text:style-name=\"Heading_20_" + level + "\" text:outline-level=\"" + level
                + "\">" + escaped(heading.text) + "</text:h>\n";
    }

    void operator()(const ReportParagraph& block)
    {
        body += paragraph(styleOf(block.emphasis), block.text);
    }

    void operator()(const ReportList& list)
    {
        body += "<text:list text:style-name=\"Bullets\">\n";
        for (const QString& text : list.texts) {
            body += "<text:list-item>" + paragraph(styleOf(list.emphasis), text)
                    + "</text:list-item>\n";
        }
        body += "</text:list>\n";
    }

    void operator()(const ReportTable& table)
    {
        const QByteArray name = "Table" + QByteArray::number(++tables);
        body += paragraph("Caption", table.caption) + "<table:table table:name=\"" + name
                + "\" table:style-name=\"" + name + "\">\n";
        double width = 0.0;
        int column = 0;
        for (const double share : columnShares(table)) {
            const QByteArray style = name + '.' + QByteArray::number(++column);
            styles += "<style:style style:name=\"" + style
                      + "\" style:family=\"table-column\"><style:table-column-properties "
                        "style:column-width=\""
                      + centimetres(share * bodyWidth) + "\"/></style:style>\n";
            body += "<table:table-column table:style-name=\"" + style + "\"/>\n";
            width += share * bodyWidth;
        }
        styles += "<style:style style:name=\"" + name
                  + "\" style:family=\"table\"><style:table-properties style:width=\""
                  + centimetres(width)
                  + "\" table:align=\"left\" fo:margin-bottom=\"0.3cm\"/></style:style>\n";
        body += "<table:table-header-rows>\n";
        addRow(
            table, table.headings,
            {"HeadingCell", "Table_20_Heading", "Table_20_Number_20_Heading", "Table_20_Heading"});
        body += "</table:table-header-rows>\n";
        for (const QStringList& row : table.rows) {
            addRow(table, row, {"Cell", "Table_20_Contents", "Table_20_Numbers", "Table_20_Codes"});
        }
        body += "</table:table>\n";
    }

    void operator()(const ReportChart& chart)
    {
        pictures.append(chartPng(chart, pictureScale));
        const QByteArray number = QByteArray::number(pictures.size());
        body += "<text:p text:style-name=\"Figure\"><draw:frame draw:style-name=\"Picture\" "
                "draw:name=\"Figure "
                + number + "\" text:anchor-type=\"as-char\" svg:width=\"" + centimetres(bodyWidth)
                + "\" svg:height=\"" + centimetres(bodyWidth * chartHeight / chartWidth)
                + "\"><draw:image xlink:href=\"Pictures/" + number
                + ".png\" xlink:type=\"simple\" xlink:show=\"embed\" xlink:actuate=\"onLoad\"/>"
                  "<svg:desc>"
                + escaped(chart.description) + "</svg:desc></draw:frame></text:p>\n"
                + paragraph("Figure_20_Caption", chart.caption);
    }

private:
    /// Styles of a row.
    struct RowStyles
    {
        const char* cell;
        const char* text;
        const char* number;
        const char* code;
    };

    void addRow(const ReportTable& table, const QStringList& cells, const RowStyles& names)
    {
        body += "<table:table-row table:style-name=\"Row\">";
        for (int column = 0; column < cells.size(); ++column) {
            const QByteArray kind = table.alignment.mid(column, 1);
            body += QByteArray("<table:table-cell table:style-name=\"") + names.cell
                    + "\" office:value-type=\"string\">"
                    + (kind == "c"
                           ? paragraph(names.code, codePieces(cells.at(column)))
                           : paragraph(kind == "r" ? names.number : names.text, cells.at(column)))
                    + "</table:table-cell>";
        }
        body += "</table:table-row>\n";
    }
};

QByteArray contentXml(const ReportDocument& document, const BodyWriter& writer)
{
    QByteArray title = paragraph("Title", document.title());
    for (const QString& line : document.subtitle()) {
        title += paragraph("Subtitle", line);
    }
    return QByteArray(xmlHead) + "<office:document-content" + odtNamespaces
           + ">\n<office:automatic-styles>\n" + odtCellStyles + writer.styles
           + "</office:automatic-styles>\n<office:body><office:text>\n" + title + writer.body
           + "</office:text></office:body>\n</office:document-content>\n";
}

QByteArray stylesXml(const ReportDocument& document)
{
    constexpr int longestHeading = 100;
    const QString heading = document.title() + " - " + document.subtitle().value(0);
    return QByteArray(xmlHead) + "<office:document-styles" + odtNamespaces
           + "><office:font-face-decls><style:font-face style:name=\"DejaVu Sans\" "
             "svg:font-family=\"'DejaVu Sans', Verdana, Arial\" "
             "style:font-family-generic=\"swiss\"/><style:font-face "
             "style:name=\"DejaVu Sans Mono\" svg:font-family=\"'DejaVu Sans Mono', monospace\" "
             "style:font-family-generic=\"modern\" style:font-pitch=\"fixed\"/>"
             "</office:font-face-decls>\n"
           + odtStyles + odtPageBeforeHeading + escaped(heading.left(longestHeading))
           + odtPageAfterHeading + "</office:document-styles>\n";
}

QByteArray metaXml(const ReportDocument& document)
{
    return QByteArray(xmlHead) + "<office:document-meta" + odtNamespaces
           + "><office:meta><meta:generator>Velmora</meta:generator><dc:title>"
           + escaped(document.title()) + "</dc:title></office:meta></office:document-meta>\n";
}

QByteArray manifestXml(int pictureCount)
{
    const auto entry = [](const QByteArray& path, const QByteArray& type) {
        return "<manifest:file-entry manifest:full-path=\"" + path + "\" manifest:media-type=\""
               + type + "\"/>\n";
    };
    QByteArray xml = QByteArray(xmlHead)
                     + "<manifest:manifest "
                       "xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" "
                       "manifest:version=\"1.2\">\n"
                     + entry("/", mimeType) + entry("content.xml", "text/xml")
                     + entry("styles.xml", "text/xml") + entry("meta.xml", "text/xml");
    for (int picture = 1; picture <= pictureCount; ++picture) {
        xml += entry("Pictures/" + QByteArray::number(picture) + ".png", "image/png");
    }
    return xml + "</manifest:manifest>\n";
}

} // namespace

std::optional<QByteArray> odtReport(const ReportDocument& document, const GoesOnWithShare& goesOn)
{
    using Packing = ZipArchive::Packing;
    BodyWriter writer;
    const QVector<ReportBlock>& blocks = document.blocks();
    for (int block = 0; block < blocks.size(); ++block) {
        std::visit(writer, blocks.at(block));
        if (!goesOn(double(block + 1) / blocks.size())) {
            return std::nullopt;
        }
    }
    ZipArchive archive;
    archive.add("mimetype", mimeType, Packing::Stored); // first, so that the file is known by it
    archive.add("content.xml", contentXml(document, writer), Packing::Deflated);
    archive.add("styles.xml", stylesXml(document), Packing::Deflated);
    archive.add("meta.xml", metaXml(document), Packing::Deflated);
    int number = 0;
    for (const QByteArray& picture : qAsConst(writer.pictures)) {
        archive.add("Pictures/" + QByteArray::number(++number) + ".png", picture, Packing::Stored);
    }
    archive.add("META-INF/manifest.xml", manifestXml(number), Packing::Deflated);
    return archive.finished();
}
