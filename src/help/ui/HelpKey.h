#pragma once

#include "HelpTopics.h"
#include "HelpWindow.h"
#include "PathMap.h"

#include <QObject>

#include <functional>
#include <memory>

// The key F1, in every window of the program: opens the manual at the page about what has the focus; in a message box
// at the message that it shows. It watches the application's events until it goes, and takes its help window along.
class HelpKey : public QObject
{
    Q_OBJECT

public:
    // A control whose topic depends on what it shows: counts where the manual has the topic.
    struct Detail
    {
        QString control; // object name
        std::function<HelpTopic()> topic;
    };
    struct Parts
    {
        const platform::PathMap& paths;                   // kept
        std::function<QString(const QString&)> translate; // texts of the help window
        std::function<QString()> helpFile;                // desktop path of the help file of the language in use
        Detail detail;
    };

    explicit HelpKey(const Parts& parts, QObject* parent = nullptr);
    ~HelpKey() override;

    // As F1 in that control does; null: nothing has the focus. For the menu and the toolbar.
    void openFor(const QWidget* focused);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static QVector<HelpPlace> placesOf(const QWidget* focused);
    HelpTopic topicOf(const QWidget* focused, const QString& folder) const;
    HelpTopic detailOf(const QVector<HelpPlace>& places, const QString& folder) const;

    Parts m_parts;
    std::unique_ptr<platform::HelpWindow> m_window;
};
