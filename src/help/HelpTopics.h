#pragma once

#include <QString>
#include <QVector>

#include <span>

// A place of the window where help was asked for.
struct HelpPlace
{
    QString window;  // object name of the window
    QString control; // object name; empty: the window itself
};

// A page of the manual, and an id on it.
struct HelpTopic
{
    QString page;
    QString anchor;
};

// One row of the table of topics. Names of windows and controls are their object names; a tab of a tab strip is its
// name, "_" and its index.
struct HelpTopicRow
{
    const char16_t* window;
    const char16_t* control;
    const char16_t* page;
    const char16_t* anchor;
};

std::span<const HelpTopicRow> helpTopicRows();

// The topic for what has the focus: the first of the places, from the inside outwards, that the table knows. The
// contents of the manual when it knows none.
HelpTopic helpTopic(const QVector<HelpPlace>& places);

// The row of a parameter in the manual's reference of its model. A model that is not shipped has no such page.
HelpTopic parameterTopic(const QString& modelCode, const QString& tag);
