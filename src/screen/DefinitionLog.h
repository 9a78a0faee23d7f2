#pragma once

#include "DefinitionFinding.h"
#include "Log.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>
#include <vector>

class clsLibrary;

// What a load finds wrong with a definition, kept and written to the error log, up to a number of findings. start
// before each load. The log is kept by reference.
class DefinitionLog
{
public:
    void setErrorLog(Log& log) { m_errorLog = log; }
    void error(const QString& message) const; // a line of its own

    void start(const QString& screenFile);
    void add(DefinitionFinding finding); // without a file it is the screen file's
    const std::vector<DefinitionFinding>& findings() const { return m_findings; } // since start
    // Adds a finding on "CellData" when the text names no colour.
    void checkColor(const clsLibrary& library, const QString& section, const QString& text);
    // The decimal places of the item of this number lead back to itself: once for each item.
    void circle(int number, const QString& tag);
    void missingTables(clsLibrary& library); // shown to the user too; once

private:
    static constexpr size_t kMaxFindings = 200; // that are listed one by one

    std::reference_wrapper<Log> m_errorLog = noLog();
    QString m_screenFile;
    std::vector<DefinitionFinding> m_findings;
    bool m_tablesMissing = false;
    QSet<int> m_circles;
    QHash<QString, bool> m_colors; // texts checked: whether they are colours
};
