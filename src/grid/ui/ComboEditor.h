#pragma once

#include <QComboBox>

namespace platform {

// The list of a combo cell while it is open. showPopup opens it; then exactly one of chosen and dismissed follows.
// The mouse wheel scrolls what is behind it instead of changing the choice.
class ComboEditor : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboEditor(QWidget* parent);

    void showPopup() override;
    bool isListOpen() const { return m_isPending; }
    // Else currentIndex is only looked at: typing goes to the choice that begins so.
    bool isChosen() const { return m_isChosen; }

Q_SIGNALS:
    void chosen();    // currentIndex is what was chosen
    void dismissed(); // by Escape or a click elsewhere

protected:
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onActivated();
    void onListHidden();

    bool m_isChosen = false;
    bool m_isPending = false; // the list was opened and its outcome not reported yet
};

} // namespace platform
