// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/pdf.h"

#include "report/chartpainter.h"
#include "report/columns.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <qcustomplot.h>

#include <numeric>

namespace {

constexpr int dotsPerInch = 600;
constexpr double inch = 25.4; ///< mm
constexpr double sideMargin = 18;
constexpr double topMargin = 22; ///< with the heading of the page in it
constexpr double bottomMargin = 18;
constexpr double lineOfPage = 12; ///< of its heading, from the upper edge of the paper
constexpr double bodyPoints = 9;
constexpr int lettersInLine = 88; ///< about so many, of a table
constexpr int chartObject = QTextFormat::UserObject + 1;
constexpr int chartProperty = QTextFormat::UserProperty + 1;
constexpr int keptProperty = QTextFormat::UserProperty + 2; ///< with the block behind it
/// What Qt may take for the end of a PDF, fonts included, which it does not survive the lack of.
constexpr int memoryForEnd = 48 << 20;

const QColor warningColor(253, 240, 220);
const QColor warningBorderColor(138, 90, 0);
const QColor statementColor(235, 235, 235);

double dots(double millimetres)
{
    return millimetres / inch * dotsPerInch;
}

QFont bodyFont(double points = bodyPoints)
{
    QFont font("DejaVu Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    return font;
}

/// Lays charts out as objects in the text, and draws them.
class ChartObject : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    explicit ChartObject(QCPPainter* painterOfPages)
        : painter(painterOfPages)
    {
    }

    int add(const ReportChart& chart)
    {
        charts.append(chart);
        return charts.size() - 1;
    }

    QSizeF intrinsicSize(QTextDocument* /*document*/, int /*position*/,
                         const QTextFormat& /*format*/) override
    {
        return QSizeF(chartWidth, chartHeight) * dotsPerInch / chartDotsPerInch;
    }

    void drawObject(QPainter* /*of the pages*/, const QRectF& place, QTextDocument* /*document*/,
                    int /*position*/, const QTextFormat& format) override
    {
        painter->save();
        painter->translate(place.topLeft());
        painter->scale(place.width() / chartWidth, place.height() / chartHeight);
        drawChart(charts.at(format.property(chartProperty).toInt()), painter);
        painter->restore();
    }

private:
    static constexpr double chartDotsPerInch = 96;
    QCPPainter* painter;
    QVector<ReportChart> charts;
};

/// Puts blocks of a report into a text.
class TextMaker
{
public:
    TextMaker(QTextDocument* text, ChartObject* chartObjects)
        : cursor(text)
        , charts(chartObjects)
    {
    }

    void addTitle(const ReportDocument& report)
    {
        paragraph(report.title(), bodyFont(18), 0, 4, true);
        for (const QString& line : report.subtitle()) {
            paragraph(line, bodyFont(), 0, 1);
        }
    }

    void operator()(const ReportHeading& heading)
    {
        const bool isChapter = heading.level == 1;
        paragraph(heading.text, bodyFont(isChapter ? 14 : 11), isChapter ? 16 : 11, 5, true, true);
        QTextBlockFormat format = cursor.blockFormat();
        format.setHeadingLevel(heading.level);
        cursor.setBlockFormat(format);
    }

    void operator()(const ReportParagraph& block)
    {
        const bool isStatement = block.emphasis == Emphasis::Statement;
        beginFrame(block.emphasis);
        paragraph(block.text, bodyFont(isStatement ? bodyPoints + 1.5 : bodyPoints), 2, 5,
                  isStatement);
        endFrame(block.emphasis);
    }

    void operator()(const ReportList& list)
    {
        QTextListFormat format;
        format.setStyle(QTextListFormat::ListDisc);
        format.setIndent(1);
        QTextList* made = nullptr;
        beginFrame(list.emphasis);
        for (const QString& text : list.texts) {
            paragraph(text, bodyFont(), 1, 2);
            if (made == nullptr) {
                made = cursor.createList(format);
            } else {
                made->add(cursor.block());
            }
        }
        endFrame(list.emphasis);
    }

    void operator()(const ReportTable& table)
    {
        paragraph(table.caption, bodyFont(), 8, 3, true, true);
        QTextTable* cells =
            cursor.insertTable(table.rows.size() + 1, table.headings.size(), tableFormat(table));
        for (int column = 0; column < table.headings.size(); ++column) {
            fill(cells->cellAt(0, column), table.headings.at(column), table, column, true);
            for (int row = 0; row < table.rows.size(); ++row) {
                fill(cells->cellAt(row + 1, column), table.rows.at(row).at(column), table, column,
                     false);
            }
        }
        cursor.movePosition(QTextCursor::End);
        isFresh = true;
        paragraph(QString(), bodyFont(6), 0, 0); // margins right below a table have no effect
    }

    void operator()(const ReportChart& chart)
    {
        paragraph(QString(), bodyFont(), 6, 0, false, true);
        QTextCharFormat format;
        format.setObjectType(chartObject);
        format.setProperty(chartProperty, charts->add(chart));
        cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
        paragraph(chart.caption, bodyFont(), 2, 8, true);
    }

private:
    /// Begins a paragraph; margins are in points.
    void paragraph(const QString& text, const QFont& font, double above, double below,
                   bool isBold = false, bool isKept = false)
    {
        QTextBlockFormat block;
        block.setTopMargin(above);
        block.setBottomMargin(below);
        block.setProperty(keptProperty, isKept);
        QTextCharFormat letters;
        letters.setFont(font);
        letters.setFontWeight(isBold ? QFont::Bold : QFont::Normal);
        if (isFresh) {
            cursor.setBlockFormat(block);
            cursor.setBlockCharFormat(letters);
        } else {
            cursor.insertBlock(block, letters);
        }
        isFresh = false;
        cursor.insertText(text, letters);
    }

    void beginFrame(Emphasis emphasis)
    {
        if (emphasis == Emphasis::None) {
            return;
        }
        const bool isWarning = emphasis == Emphasis::Warning;
        QTextFrameFormat format;
        format.setBackground(isWarning ? warningColor : statementColor);
        format.setBorder(isWarning ? 1 : 0);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(warningBorderColor);
        format.setPadding(5);
        format.setBottomMargin(6);
        cursor.insertFrame(format);
        isFresh = true;
    }

    void endFrame(Emphasis emphasis)
    {
        if (emphasis != Emphasis::None) {
            cursor.movePosition(QTextCursor::End);
            isFresh = true;
        }
    }

    static void fill(QTextTableCell cell, const QString& text, const ReportTable& table, int column,
                     bool isHeading)
    {
        QTextTableCellFormat border;
        border.setBottomBorder(isHeading ? 1.2 : 0.5);
        border.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        border.setBottomBorderBrush(isHeading ? Qt::black : QColor(187, 187, 187));
        border.setVerticalAlignment(isHeading ? QTextCharFormat::AlignBottom
                                              : QTextCharFormat::AlignTop);
        border.setTopPadding(2);
        border.setBottomPadding(2);
        border.setRightPadding(8);
        cell.setFormat(border);
        QTextCursor inside = cell.firstCursorPosition();
        QTextBlockFormat block;
        block.setAlignment(table.alignment.mid(column, 1) == "r" ? Qt::AlignRight : Qt::AlignLeft);
        inside.setBlockFormat(block);
        QTextCharFormat letters;
        letters.setFont(bodyFont(bodyPoints - 1));
        letters.setFontWeight(isHeading ? QFont::Bold : QFont::Normal);
        inside.insertText(text, letters);
    }

    static QTextTableFormat tableFormat(const ReportTable& table)
    {
        QTextTableFormat format;
        format.setHeaderRowCount(1);
        format.setBorder(0);
        format.setCellPadding(0);
        format.setCellSpacing(0);
        const QVector<double> shares = columnShares(table, lettersInLine);
        const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
        QVector<QTextLength> widths;
        for (const double share : shares) {
            widths.append(QTextLength(QTextLength::PercentageLength, 100 * share / sum));
        }
        format.setColumnWidthConstraints(widths);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100 * qMin(1.0, sum)));
        return format;
    }

    QTextCursor cursor;
    ChartObject* charts;
    bool isFresh = true; ///< whether the cursor stands in an empty paragraph
};

/// The pages of a text.
class Pages
{
public:
    Pages(const ReportDocument& report, QPdfWriter* pdfWriter, QCPPainter* painterOfPages)
        : writer(pdfWriter)
        , painter(painterOfPages)
        , charts(painterOfPages)
        , heading(report.title() + " - " + report.subtitle().value(0))
    {
        text.setDefaultFont(bodyFont());
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        text.setDefaultTextOption(option);
        text.setUndoRedoEnabled(false);
        TextMaker maker(&text, &charts);
        maker.addTitle(report);
        for (const ReportBlock& block : report.blocks()) {
            std::visit(maker, block);
        }
        QAbstractTextDocumentLayout* layout = text.documentLayout();
        layout->registerHandler(chartObject, &charts);
        layout->setPaintDevice(writer);
        text.setDocumentMargin(0);
        body = QRectF(dots(sideMargin), dots(topMargin), writer->width() - 2 * dots(sideMargin),
                      writer->height() - dots(topMargin) - dots(bottomMargin));
        text.setPageSize(body.size());
        constexpr int mostPasses = 3; // as a break moves what is behind it
        for (int pass = 0; pass < mostPasses && keepTogether(); ++pass) {
            text.setPageSize(body.size()); // lays all out anew: changes leave parts undrawn
        }
    }

    int count() const { return text.pageCount(); }

    void draw(int page)
    {
        drawFrame(page);
        painter->save();
        painter->translate(body.left(), body.top() - page * body.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(0, page * body.height(), body.width(), body.height());
        painter->setClipRect(context.clip);
        context.palette.setColor(QPalette::Text, Qt::black);
        text.documentLayout()->draw(painter, context);
        painter->restore();
    }

private:
    int pageOf(double height) const { return int(height / body.height()); }

    /// The page on which a block ends or, if it is in a short table, on which that does.
    int lastPageOf(const QTextBlock& block) const
    {
        constexpr int shortRows = 16;
        const QAbstractTextDocumentLayout* layout = text.documentLayout();
        QTextTable* table = QTextCursor(block).currentTable();
        return pageOf((table != nullptr && table->rows() <= shortRows
                           ? layout->frameBoundingRect(table)
                           : layout->blockBoundingRect(block))
                          .bottom());
    }

    /// Moves headings and captions to the page on which what they belong to begins. Whether there
    /// were any to be moved.
    bool keepTogether()
    {
        const auto isKept = [](const QTextBlock& block) {
            return block.isValid() && block.blockFormat().property(keptProperty).toBool();
        };
        bool isChanged = false;
        for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
            if (!isKept(block)) {
                continue;
            }
            const QTextBlock first = block;
            while (isKept(block.next())) {
                block = block.next();
            }
            const QTextBlock last = block.next();
            const int page = pageOf(text.documentLayout()->blockBoundingRect(first).top());
            if (last.isValid() && lastPageOf(last) != page) {
                QTextBlockFormat format = first.blockFormat();
                isChanged |= format.pageBreakPolicy() == QTextFormat::PageBreak_Auto;
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                QTextCursor(first).setBlockFormat(format);
            }
        }
        return isChanged;
    }

    void drawFrame(int page)
    {
        painter->setFont(bodyFont(bodyPoints - 1));
        painter->setPen(Qt::black);
        const QRectF line(body.left(), dots(lineOfPage), body.width(), dots(5));
        const QFontMetricsF metrics(painter->font(), writer);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          metrics.elidedText(heading, Qt::ElideMiddle, body.width()));
        painter->setPen(QPen(Qt::black, dots(0.2)));
        painter->drawLine(line.bottomLeft(), line.bottomRight());
        painter->drawText(QRectF(body.left(), writer->height() - dots(bottomMargin) + dots(3),
                                 body.width(), dots(6)),
                          Qt::AlignRight | Qt::AlignTop,
                          QString("Page %1 of %2").arg(page + 1).arg(count()));
    }

    QPdfWriter* writer;
    QCPPainter* painter;
    ChartObject charts;
    QTextDocument text;
    QString heading;
    QRectF body;
};

} // namespace

std::optional<QByteArray> pdfReport(const ReportDocument& document, const GoesOnWithShare& goesOn)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(document.title());
    writer.setCreator("Velmora");
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
    QCPPainter painter;
    QByteArray reserve(memoryForEnd, Qt::Uninitialized);
    if (!painter.begin(&writer)) {
        qBadAlloc();
    }
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNonCosmetic);
    bool isGoing = true;
    {
        Pages pages(document, &writer, &painter);
        const int count = pages.count();
        for (int page = 0; isGoing && page < count; ++page) {
            if (page > 0) {
                writer.newPage();
            }
            pages.draw(page);
            isGoing = goesOn(double(page + 1) / count);
        }
    }
    reserve.clear();
    if (!painter.end()) {
        qBadAlloc();
    }
    return isGoing ? std::optional<QByteArray>(buffer.data()) : std::nullopt;
}

#include "pdf.moc"
