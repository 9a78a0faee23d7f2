#include "HelpTopics.h"

#include <algorithm>

namespace {

constexpr HelpTopicRow kRows[] = {
    {u"frmMain", u"", u"main-window.html", u"main-window"},
    {u"frmMain", u"sprMain", u"editing.html", u"editing"},
    {u"frmMain", u"findBar", u"editing.html", u"find"},
    {u"frmMain", u"lblHint", u"communication.html", u"communication"},
    {u"frmMain", u"startPage", u"main-window.html", u"start"},
    {u"frmMain", u"tlbMain", u"main-window.html", u"toolbar"},
    {u"frmMain", u"stbMain", u"main-window.html", u"status-bar"},
    {u"frmMain", u"panelChanges", u"review.html", u"review"},
    {u"frmMain", u"panelWrite", u"transfer.html", u"report"},
    {u"FileMenu", u"", u"files.html", u"parameter-files"},
    {u"FileMenu", u"mnuFile_0", u"files.html", u"open"},
    {u"FileMenu", u"mnuFile_1", u"files.html", u"save"},
    {u"FileMenu", u"mnuFile_4", u"files.html", u"save"},
    {u"FileMenu", u"mnuFile_3", u"files.html", u"backups"},
    {u"FileMenu", u"mnuFile_2", u"main-window.html", u"menus"},
    {u"RecentMenu", u"", u"files.html", u"recent"},
    {u"EditMenu", u"", u"editing.html", u"clipboard"},
    {u"EditMenu", u"mnuEdit_2", u"editing.html", u"undo"},
    {u"EditMenu", u"mnuEdit_3", u"editing.html", u"undo"},
    {u"EditMenu", u"mnuEdit_4", u"editing.html", u"find"},
    {u"EditMenu", u"mnuEdit_5", u"editing.html", u"find"},
    {u"EditMenu", u"mnuEdit_6", u"editing.html", u"find"},
    {u"EditMenu", u"mnuEdit_7", u"editing.html", u"find"},
    {u"ViewMenu", u"", u"main-window.html", u"zoom"},
    {u"KXMenu", u"", u"transfer.html", u"transfer"},
    {u"KXMenu", u"mnuKX_0", u"communication.html", u"communication"},
    {u"KXMenu", u"mnuKX_1", u"transfer.html", u"reading"},
    {u"KXMenu", u"mnuKX_2", u"transfer.html", u"writing"},
    {u"KXMenu", u"mnuKX_4", u"review.html", u"review"},
    {u"KXMenu", u"mnuKX_5", u"windows.html", u"history"},
    {u"KXMenu", u"mnuKX_3", u"windows.html", u"traffic"},
    {u"OptionMenu", u"", u"windows.html", u"options"},
    {u"OptionMenu", u"mnuOption_1", u"settings.html", u"reset"},
    {u"HelpMenu", u"", u"windows.html", u"help"},
    {u"HelpMenu", u"mnuHelp_3", u"first-steps.html", u"start"},
    {u"HelpMenu", u"mnuHelp_2", u"settings.html", u"diagnostics"},
    {u"HelpMenu", u"mnuHelp_1", u"windows.html", u"version"},
    {u"frmComSet", u"", u"communication.html", u"communication"},
    {u"frmComSet", u"Frame1", u"connecting.html", u"settings"},
    {u"frmComSet", u"Combo1", u"connecting.html", u"com"},
    {u"frmComSet", u"lblTrouble", u"connecting.html", u"nothing-answers"},
    {u"frmComSet", u"Frame2", u"connecting.html", u"settings"},
    {u"frmComSet", u"Frame3", u"communication.html", u"fields"},
    {u"frmComSet", u"Command2", u"communication.html", u"detect"},
    {u"frmComSet", u"cmdStop", u"communication.html", u"detect"},
    {u"frmComSet", u"Command3", u"communication.html", u"search"},
    {u"frmComSet", u"Command4", u"windows.html", u"traffic"},
    {u"frmComSet", u"Text3", u"communication.html", u"fields"},
    {u"frmComSet", u"Command1_0", u"communication.html", u"ok"},
    {u"frmComSet", u"Command1_1", u"communication.html", u"cancel"},
    {u"frmHistory", u"", u"windows.html", u"history"},
    {u"frmOption", u"", u"windows.html", u"options"},
    {u"frmOption", u"SSTab1_0", u"windows.html", u"options-general"},
    {u"frmOption", u"SSTab1_1", u"windows.html", u"options-questions"},
    {u"frmOption", u"SSTab1_2", u"windows.html", u"options-display"},
    {u"frmMultiSelect", u"", u"windows.html", u"selection"},
    {u"frmMessageBox", u"", u"messages.html", u"messages"},
    {u"frmProgbar", u"", u"windows.html", u"progress"},
    {u"frmShowVersion", u"", u"windows.html", u"version"},
    {u"frmBackups", u"", u"files.html", u"backups"},
    {u"frmScan", u"", u"communication.html", u"search"},
    {u"frmReview", u"", u"review.html", u"review"},
    {u"frmTraffic", u"", u"windows.html", u"traffic"},
    {u"HelpWindow", u"", u"windows.html", u"help"},
    {u"QFileDialog", u"", u"files.html", u"parameter-files"},
};

} // namespace

std::span<const HelpTopicRow> helpTopicRows()
{
    return kRows;
}

HelpTopic helpTopic(const QVector<HelpPlace>& places)
{
    for (const HelpPlace& place : places) {
        const auto* row = std::find_if(std::begin(kRows), std::end(kRows), [&place](const HelpTopicRow& known) {
            return place.window == QStringView(known.window) && place.control == QStringView(known.control);
        });
        if (row != std::end(kRows))
            return {QString::fromUtf16(row->page), QString::fromUtf16(row->anchor)};
    }
    return {QStringLiteral("index.html"), QString()};
}

HelpTopic parameterTopic(const QString& modelCode, const QString& tag)
{
    return {QStringLiteral("parameters-%1.html").arg(modelCode), tag};
}
