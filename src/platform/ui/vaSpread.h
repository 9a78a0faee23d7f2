#pragma once

#include "GridModel.h"
#include "SpreadDelegate.h"

#include <QTableView>

namespace platform {

// The parameter grid as a widget: shows a GridModel and tells what a person does in it. It changes no cell by itself.
class vaSpread : public QTableView
{
    Q_OBJECT

public:
    explicit vaSpread(QWidget* parent = nullptr);
    ~vaSpread() override;

    void setGrid(GridModel* grid); // kept, not owned
    GridModel* grid() const { return m_grid; }
    void setSelectionColors(ColorRef back, ColorRef fore);
    // Pale while the cells hold something else than what they are there for.
    void setPale(bool pale);

Q_SIGNALS:
    void editChanged(int col, int row, const QString& text);
    void comboSelChange(int col, int row, int choice);
    void buttonClicked(int col, int row);
    void dblClick(int col, int row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void applySizes();
    void paintFrames(QPainter& painter) const;
    void onClicked(const QModelIndex& index);

    GridModel* m_grid = nullptr;
    bool m_pale = false;
    GridFonts m_fonts;
    SpreadDelegate m_delegate{m_fonts};
    WidgetTextMeasure m_measure{m_fonts};
};

} // namespace platform
