#pragma once

#include <QStatusBar>

class QLabel;
class QToolButton;

// Status bar of the main window: model string, serial link, state of the grid.
class MainStatusBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit MainStatusBar(QWidget* parent = nullptr);

    void setModelText(const QString& text);
    void setLinkText(const QString& text);
    void setStateText(const QString& text, const QString& toolTip);
    void setHintText(const QString& text); // about the current cell
    // How the last write went; without a text the panel is not there. details: what went wrong, empty when nothing did.
    void setWriteText(const QString& text, const QString& details);

    void setChangesText(const QString& text); // what was not sent; without a text the panel is not there

Q_SIGNALS:
    void changesClicked();
    void writeClicked();

private:
    QLabel* addPanel(const QString& objectName, const QString& accessibleName, int stretch);
    QToolButton* addButton(const QString& objectName);
    static void showIn(QLabel& panel, const QString& text, const QString& toolTip);

    QLabel* m_model;
    QLabel* m_link;
    QLabel* m_state;
    QLabel* m_hint;
    QToolButton* m_changes;
    QToolButton* m_write;
};
