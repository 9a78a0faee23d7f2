#pragma once

#include "ParameterSearch.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QStringListModel;
class QToolButton;

namespace platform {
class vaSpread;
}

// The bar above the grid: what to look for, which parameters to look at, how many there are; and a way to a tag. The
// hits are highlighted in the grid while the bar is open, the current one is the grid's current cell. Follows the cells
// and the loaded model; call translate after a change of language. Model and grid are kept.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    FindBar(const clsKX& kx, platform::vaSpread& sheet, QWidget* parent = nullptr);

    void translate();
    void openText(); // with the cursor in the text to look for
    void openTag();
    void findNext();     // from the current cell on; opens the bar
    void findPrevious(); // back from it
    void leave();        // back to the grid

private:
    void setupParts();
    void connectParts();
    void open(QLineEdit& field);
    void noteChange(bool isOtherModel);
    void follow();
    void reload();
    platform::CellPlace here() const;
    void goTo(const std::optional<platform::CellPlace>& place);
    void goToTag(const QString& tag);
    void findFromHere();
    void showHits();
    void showCount();

    const clsKX& m_kx;
    platform::vaSpread& m_sheet;
    ParameterSearch m_search;
    QLabel* m_caption;
    QLineEdit* m_text;
    QComboBox* m_scope;
    QToolButton* m_previous;
    QToolButton* m_next;
    QLabel* m_count;
    QLabel* m_tagCaption;
    QLineEdit* m_tag;
    QToolButton* m_close;
    QStringListModel* m_tags;
    bool m_isStale = true; // the model is another one than the search knows
    bool m_isDue = false;  // an update is on its way
};
