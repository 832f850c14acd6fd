// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_ODTSTYLES_H
#define VELMORA_REPORT_ODTSTYLES_H

// The parts of OpenDocument files that are the same in every report.

/// Namespaces of all elements, as attributes of the outermost one.
constexpr char odtNamespaces[] =
    " xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
    " xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\""
    " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
    " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
    " xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\""
    " xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\""
    " xmlns:svg=\"urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0\""
    " xmlns:xlink=\"http://www.w3.org/1999/xlink\""
    " xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
    " xmlns:meta=\"urn:oasis:names:tc:opendocument:xmlns:meta:1.0\""
    " office:version=\"1.2\"";

/// The styles of paragraphs by which a word processor knows titles and headings.
constexpr char odtStyles[] = R"(<office:styles>
<style:default-style style:family="paragraph">
<style:paragraph-properties fo:margin-top="0cm" fo:margin-bottom="0.15cm"/>
<style:text-properties style:font-name="DejaVu Sans" fo:font-size="9.5pt" fo:language="en"
fo:country="GB"/>
</style:default-style>
<style:style style:name="Standard" style:family="paragraph" style:class="text"/>
<style:style style:name="Text_20_body" style:display-name="Text body" style:family="paragraph"
style:parent-style-name="Standard" style:class="text"/>
<style:style style:name="Title" style:family="paragraph" style:parent-style-name="Standard"
style:next-style-name="Text_20_body" style:class="chapter"><style:text-properties
fo:font-size="20pt" fo:font-weight="bold"/></style:style>
<style:style style:name="Subtitle" style:family="paragraph" style:parent-style-name="Standard"
style:next-style-name="Text_20_body" style:class="chapter"><style:text-properties
fo:color="#444444"/></style:style>
<style:style style:name="Heading_20_1" style:display-name="Heading 1" style:family="paragraph"
style:parent-style-name="Standard" style:next-style-name="Text_20_body"
style:default-outline-level="1" style:class="text"><style:paragraph-properties
fo:margin-top="0.7cm" fo:margin-bottom="0.2cm" fo:keep-with-next="always"/><style:text-properties
fo:font-size="15pt" fo:font-weight="bold"/></style:style>
<style:style style:name="Heading_20_2" style:display-name="Heading 2" style:family="paragraph"
style:parent-style-name="Standard" style:next-style-name="Text_20_body"
style:default-outline-level="2" style:class="text"><style:paragraph-properties
fo:margin-top="0.5cm" fo:margin-bottom="0.15cm"
fo:keep-with-next="always"/><style:text-properties fo:font-size="12pt"
fo:font-weight="bold"/></style:style>
<style:style style:name="Statement" style:family="paragraph"
style:parent-style-name="Text_20_body"><style:paragraph-properties
fo:border-left="0.1cm solid #111111" fo:padding-left="0.2cm"
fo:margin-bottom="0.3cm"/><style:text-properties fo:font-size="11pt"
fo:font-weight="bold"/></style:style>
<style:style style:name="Warning" style:family="paragraph"
style:parent-style-name="Text_20_body"><style:paragraph-properties
fo:background-color="#fdf0dc"/></style:style>
<style:style style:name="Table_20_Contents" style:display-name="Table Contents"
style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties fo:margin-bottom="0cm"/><style:text-properties
fo:font-size="8.5pt"/></style:style>
<style:style style:name="Table_20_Numbers" style:display-name="Table Numbers"
style:family="paragraph" style:parent-style-name="Table_20_Contents"
style:class="extra"><style:paragraph-properties fo:text-align="end"/></style:style>
<style:style style:name="Table_20_Codes" style:display-name="Table Codes"
style:family="paragraph" style:parent-style-name="Table_20_Contents"
style:class="extra"><style:text-properties style:font-name="DejaVu Sans Mono"
fo:font-size="7pt"/></style:style>
<style:style style:name="Table_20_Heading" style:display-name="Table Heading"
style:family="paragraph" style:parent-style-name="Table_20_Contents"
style:class="extra"><style:text-properties fo:font-weight="bold"/></style:style>
<style:style style:name="Table_20_Number_20_Heading" style:display-name="Table Number Heading"
style:family="paragraph" style:parent-style-name="Table_20_Heading"
style:class="extra"><style:paragraph-properties fo:text-align="end"/></style:style>
<style:style style:name="Caption" style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties fo:margin-top="0.3cm"
fo:keep-with-next="always"/><style:text-properties fo:font-weight="bold"/></style:style>
<style:style style:name="Figure" style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties fo:margin-top="0.3cm"
fo:keep-with-next="always"/></style:style>
<style:style style:name="Figure_20_Caption" style:display-name="Figure Caption"
style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties fo:margin-bottom="0.4cm"/><style:text-properties
fo:font-weight="bold"/></style:style>
<style:style style:name="Header" style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties
fo:border-bottom="0.02cm solid #111111"/><style:text-properties
fo:font-size="8.5pt"/></style:style>
<style:style style:name="Footer" style:family="paragraph" style:parent-style-name="Standard"
style:class="extra"><style:paragraph-properties fo:text-align="end"/><style:text-properties
fo:font-size="8.5pt"/></style:style>
<style:style style:name="Graphics" style:family="graphic"/>
<text:list-style style:name="Bullets"><text:list-level-style-bullet text:level="1"
text:bullet-char="&#x2022;"><style:list-level-properties
text:list-level-position-and-space-mode="label-alignment"><style:list-level-label-alignment
text:label-followed-by="listtab" fo:text-indent="-0.5cm"
fo:margin-left="0.7cm"/></style:list-level-properties>
</text:list-level-style-bullet></text:list-style>
</office:styles>
)";

/// A4 with a heading and the number of each page, around a place for the heading's text.
constexpr char odtPageBeforeHeading[] = R"(<office:automatic-styles>
<style:page-layout style:name="A4"><style:page-layout-properties fo:page-width="21cm"
fo:page-height="29.7cm" fo:margin-top="1.2cm" fo:margin-bottom="1.2cm" fo:margin-left="1.8cm"
fo:margin-right="1.8cm"/><style:header-style><style:header-footer-properties
fo:min-height="0.9cm"
fo:margin-bottom="0.4cm"/></style:header-style>
<style:footer-style><style:header-footer-properties fo:min-height="0.8cm"
fo:margin-top="0.3cm"/></style:footer-style></style:page-layout>
</office:automatic-styles>
<office:master-styles><style:master-page style:name="Standard"
style:page-layout-name="A4"><style:header><text:p text:style-name="Header">)";
constexpr char odtPageAfterHeading[] =
    R"(</text:p></style:header><style:footer><text:p
text:style-name="Footer">Page <text:page-number
text:select-page="current">1</text:page-number> of
<text:page-count>1</text:page-count></text:p></style:footer></style:master-page>
</office:master-styles>
)";

/// Styles of cells and pictures.
constexpr char odtCellStyles[] =
    R"(<style:style style:name="HeadingCell"
style:family="table-cell"><style:table-cell-properties style:vertical-align="bottom"
fo:padding="0.05cm" fo:padding-right="0.15cm" fo:border="none"
fo:border-bottom="0.05cm solid #111111"/></style:style>
<style:style style:name="Cell" style:family="table-cell"><style:table-cell-properties
fo:padding="0.05cm" fo:padding-right="0.15cm" fo:border="none"
fo:border-bottom="0.02cm solid #bbbbbb"/></style:style>
<style:style style:name="Row" style:family="table-row"><style:table-row-properties
fo:keep-together="always"/></style:style>
<style:style style:name="Picture" style:family="graphic"
style:parent-style-name="Graphics"><style:graphic-properties style:vertical-pos="top"
style:vertical-rel="baseline"/></style:style>
)";

#endif
