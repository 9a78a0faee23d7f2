#pragma once

#include <QHash>
#include <QToolBar>

class QAction;

// Toolbar of the main window: nine buttons, each known by its key. Captions are the keys until they are translated.
class MainToolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit MainToolbar(QWidget* parent = nullptr);

    QAction* button(const QString& key) const { return m_buttons.value(key); } // null for another key

private:
    void addButton(const QString& key);

    QHash<QString, QAction*> m_buttons;
};
