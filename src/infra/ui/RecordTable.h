#pragma once

#include <QTableView>

#include <vector>

class clsLibrary;

// A table of records: whole rows are selected, the widths of its columns are kept from one use to the next, and the
// copy key is a signal, because by itself a table copies one cell only. The library is kept by reference.
class RecordTable : public QTableView
{
    Q_OBJECT

public:
    // formName: of the window, under which the widths are kept; widths: of the columns at first, in widths of a digit.
    RecordTable(const clsLibrary& library, const QString& formName, std::vector<double> widths,
                QWidget* parent = nullptr);

    static int digitWidth(const QWidget& widget); // pixels

    void loadColumns(); // when there is a model
    void saveColumns() const;
    void setRowHeight(); // by the font
    // The selected rows, or all of them, from above.
    std::vector<int> chosenRows() const;

Q_SIGNALS:
    void copyWanted();
    void openWanted(); // the current row, by a double click or Enter

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const clsLibrary& m_library;
    QString m_formName;
    std::vector<double> m_widths;
};
