#include "RecordWindow.h"

#include "RecordTable.h"
#include "clsLibrary.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QHideEvent>
#include <QPushButton>
#include <QSortFilterProxyModel>

#include <utility>

RecordWindow::RecordWindow(const clsLibrary& library, const QString& formName, QSize size)
    : QDialog(nullptr, Qt::Window), m_library(library), m_placement(*this, formName), m_size(size)
{
    setObjectName(formName);
}

RecordTable* RecordWindow::addTable(QSortFilterProxyModel& rows, const QString& objectName, std::vector<double> widths)
{
    m_rows = &rows;
    m_table = new RecordTable(m_library, this->objectName(), std::move(widths), this);
    m_table->setObjectName(objectName);
    m_table->setModel(&rows);
    const QSize wanted(m_size.width() * RecordTable::digitWidth(*this), m_size.height() * fontMetrics().lineSpacing());
    resize(wanted.boundedTo(platform::roomFor(*this)));
    return m_table;
}

QPushButton* RecordWindow::addButton(QBoxLayout& row, const QString& caption)
{
    auto* button = new QPushButton(caption, row.parentWidget());
    button->setObjectName(QStringLiteral("Command1_%1").arg(m_buttons++));
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

void RecordWindow::copyRows(const QString& captions, const std::function<QString(int)>& line) const
{
    QStringList lines{captions};
    for (const int row : m_table->chosenRows())
        lines << line(m_rows->mapToSource(m_rows->index(row, 0)).row());
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void RecordWindow::showEvent(QShowEvent* event)
{
    if (!event->spontaneous()) {
        if (!m_isLaidOut) {
            m_library.loadFormSize(m_placement);
            m_table->loadColumns();
        }
        m_isLaidOut = true;
        aboutToShow();
        m_table->setFocus();
    }
    QDialog::showEvent(event);
}

// By whatever way; a minimised window is still open.
void RecordWindow::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        hidden();
        m_library.saveFormSize(m_placement);
        m_table->saveColumns();
    }
    QDialog::hideEvent(event);
}
