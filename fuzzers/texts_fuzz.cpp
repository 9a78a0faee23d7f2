// Texts from outside as they are shown: nothing in them is left that is not seen, in a table, CSV, JSON, a grid or a
// form; CSV and JSON come back as what was printed, and CSV holds no formula. Input: rows of text, a line each, with
// "|" between three cells.

#include "ControlRegistry.h"
#include "FuzzInput.h"
#include "GridModel.h"
#include "OutputFormat.h"
#include "VisibleText.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype kCells = 3;
constexpr qsizetype kMaxRows = 20;
const QStringList kColumns{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};

// Inputs are UTF-8 and, so that any code unit comes up, the same bytes as UTF-16.
QVector<QStringList> rowsOf(const QString& input)
{
    QVector<QStringList> rows;
    for (const QString& line : input.split(u'\n').mid(0, kMaxRows)) {
        QStringList cells = line.split(u'|').mid(0, kCells);
        while (cells.size() < kCells)
            cells << QString();
        rows << cells;
    }
    return rows;
}

bool isSeen(const QString& text, bool hasLines)
{
    const auto codes = text.toUcs4();
    return text.isValidUtf16() && std::none_of(codes.begin(), codes.end(), [hasLines](uint code) {
               return platform::isInvisible(code) && !(hasLines && code == U'\n');
           });
}

void checkText(const QString& text)
{
    const QString shown = platform::visibleText(text);
    const QString lines = platform::visibleLines(text);
    require(isSeen(shown, false) && isSeen(lines, true), "what is shown can be seen", shown);
    require(!isSeen(text, false) || shown == text, "what can be seen stays", shown);
    require(platform::visibleText(shown) == shown && platform::visibleLines(lines) == lines, "once is enough", shown);
}

// RFC 4180, for what is written here.
QVector<QStringList> csvRows(const QString& csv)
{
    QVector<QStringList> rows(1, QStringList(QString()));
    bool isQuoted = false;
    for (qsizetype i = 0; i < csv.size(); ++i) {
        const QChar c = csv[i];
        if (c == u'"' && isQuoted && i + 1 < csv.size() && csv[i + 1] == u'"')
            rows.last().last() += csv[++i];
        else if (c == u'"')
            isQuoted = !isQuoted;
        else if (c == u',' && !isQuoted)
            rows.last() << QString();
        else if (c == u'\n' && !isQuoted)
            rows << QStringList(QString());
        else if (c != u'\r' || isQuoted)
            rows.last().last() += c;
    }
    rows.removeLast(); // behind the last line end
    return rows;
}

void checkCsvCell(const QString& cell, const QString& text)
{
    const QString shown = platform::visibleText(text);
    require(cell == shown || cell == u'\'' + shown, "a cell holds its text", cell);
    bool isNumber = false;
    cell.toDouble(&isNumber);
    const bool isFormula = !cell.isEmpty() && QStringLiteral("=+-@\t\r").contains(cell.front()) && !isNumber;
    require(!isFormula, "a cell is no formula", cell);
}

void checkPrinted(const PrintedRows& printed)
{
    for (const OutputFormat format : {OutputFormat::Table, OutputFormat::Csv, OutputFormat::Json}) {
        QString text = QString::fromUtf8(formatRows(printed, format));
        require(isSeen(text.remove(u'\r'), true), "what is printed can be seen", text);
    }
    const auto csv = csvRows(QString::fromUtf8(formatRows(printed, OutputFormat::Csv)));
    const QJsonArray json = QJsonDocument::fromJson(formatRows(printed, OutputFormat::Json)).array();
    require(csv.size() == printed.rows.size() + 1 && json.size() == printed.rows.size(), "all rows are printed");
    for (qsizetype row = 0; row < printed.rows.size(); ++row) {
        require(csv[row + 1].size() == kCells, "a row has its cells");
        for (qsizetype i = 0; i < kCells; ++i) {
            const QString& cell = printed.rows[row][i];
            checkCsvCell(csv[row + 1][i], cell);
            const QString back = json[row][kColumns[i]].toString();
            require(!cell.isValidUtf16() || back == cell, "JSON comes back",
                    QString::fromLatin1(cell.toUtf8().toHex(' ')));
        }
    }
}

// A grid keeps what it shows otherwise.
void checkGrid(const QStringList& cells)
{
    platform::GridModel grid;
    grid.setMaxRows(1);
    grid.setMaxCols(1);
    platform::Cell cell;
    cell.text = cells[0];
    cell.toolTip = cells[1];
    grid.setCell(1, 1, cell);
    grid.setColHeader(1, cells[2], platform::HAlign::Left);
    const QModelIndex at = grid.index(0, 0);
    require(isSeen(at.data().toString(), true) && isSeen(at.data(Qt::ToolTipRole).toString(), true) &&
                isSeen(grid.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), false),
            "a grid shows what can be seen");
    require(at.data(Qt::EditRole).toString() == cells[0], "a grid keeps its texts", cells[0]);
}

// A form that a language file gives its texts.
void checkForm(const QStringList& cells)
{
    QWidget form;
    auto* label = new QLabel(&form);
    auto* button = new QPushButton(&form);
    platform::ControlRegistry registry(form, QStringLiteral("frm"));
    registry.add(label, QStringLiteral("Label1"));
    registry.add(button, QStringLiteral("Command1"));
    registry.setProperty(platform::FormProperty::Caption, cells[0]);
    for (platform::FormControl* control : registry.controls()) {
        control->setProperty(platform::FormProperty::Caption, cells[1]);
        control->setProperty(platform::FormProperty::ToolTipText, cells[2]);
    }
    require(label->textFormat() == Qt::PlainText, "a label is plain text");
    for (const QString& text : {form.windowTitle(), label->text(), button->text(), label->toolTip()})
        require(isSeen(text, true), "a form shows what can be seen", text);
}

void checkAll(const QString& input)
{
    checkText(input);
    const QVector<QStringList> rows = rowsOf(input);
    checkPrinted({kColumns, rows, {}});
    checkGrid(rows.first());
    checkForm(rows.first());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    makeRepeatable();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkAll(QString::fromUtf8(bytes));
    QString units(bytes.size() / 2, u' ');
    memcpy(units.data(), bytes.constData(), static_cast<size_t>(units.size()) * sizeof(QChar));
    checkAll(units);
    return 0;
}
