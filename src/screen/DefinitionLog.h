#pragma once

#include "Log.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>

class clsLibrary;

// What is wrong with a definition, as lines of the error log. start before each load; then each fault of that file is
// noted, up to a number of them. The log is kept, not owned.
class DefinitionLog
{
public:
    void setErrorLog(Log& log) { m_errorLog = log; }
    Log& errorLog() const { return m_errorLog; }
    void error(const QString& message) const;

    void start(const QString& screenFile);
    void fault(const QString& where, const QString& fault);
    void checkColor(const clsLibrary& library, const QString& where, const QString& text); // notes one of no known form
    // The decimal places of the item of this number lead back to itself: once for each item.
    void circle(int number, const QString& tag);
    void missingTables(clsLibrary& library); // shown to the user too; once

private:
    static constexpr int kMaxFaults = 200; // that are noted one by one

    std::reference_wrapper<Log> m_errorLog = noLog();
    QString m_screenFile;
    int m_faultCount = 0;
    bool m_tablesMissing = false;
    QSet<int> m_circles;
    QHash<QString, bool> m_colors; // texts checked: whether they are colours
};
