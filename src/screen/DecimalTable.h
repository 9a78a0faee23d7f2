#pragma once

#include <QString>
#include <array>

class clsINI;
class clsLibrary;

// Decimal places by alarm type (row) and decimal-point setting (column), one section of the screen file. Rows that a
// file does not give keep what the previously loaded model gave.
class DecimalTable
{
public:
    static constexpr int kRows = 11;
    static constexpr int kCols = 11;
    static constexpr int kFilledCols = 4;

    void load(clsINI& ini, const QString& section, const clsLibrary& library);
    int at(int row, int col) const; // 0 outside the table

private:
    std::array<std::array<int, kCols>, kRows> m_places{};
};
