#pragma once

#include <QScrollArea>

class QGridLayout;
class QLabel;
class QPushButton;

namespace platform {
class ControlRegistry;
}

// In place of the grid while no model has been chosen: three ways on, each a button with a sentence beside it. The
// first button takes the focus of the page.
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

    void setText(const QString& text); // above the buttons
    // Buttons and sentences under the names of their control arrays.
    void registerAt(platform::ControlRegistry& registry) const;

Q_SIGNALS:
    void connectWanted();
    void fileWanted();
    void simulatorWanted();

private:
    static constexpr int kWays = 3;

    void addWay(QGridLayout& grid, int way, const char* caption, const char* sentence);

    QLabel* m_text;
    QPushButton* m_buttons[kWays] = {};
    QLabel* m_sentences[kWays] = {};
};
