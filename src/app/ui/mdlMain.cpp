#include "mdlMain.h"

#include "PaletteColors.h"
#include "PlainTexts.h"
#include "ProgramContext.h"
#include "ScreenFit.h"
#include "SingleInstance.h"
#include "Terminal.h"
#include "TerminationSignals.h"
#include "VisibleText.h"
#include "WindowlessAnswer.h"
#include "frmMain.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QProcessEnvironment>
#include <QSessionManager>

#include <cstdio>

namespace {

void reportStartedAlready(const clsLibrary& library, const platform::SingleInstance& instance)
{
    const QString lock = library.tranStr(QStringLiteral("Process %1 holds the lock file %2."));
    QMessageBox::critical(nullptr, QApplication::applicationName(),
                          platform::visibleLines(library.tranStr(QStringLiteral("It is started already.")) + u'\n' +
                                                 lock.arg(instance.holder(), instance.lockFile())));
}

// The window closes with its last state stored when the process is asked to end, or the user logs out.
void endWith(QApplication& application, const platform::TerminationSignals& endRequest, frmMain& window)
{
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &window, &frmMain::closeWithoutQuestion);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window,
                     [&window](QSessionManager&) { window.closeWithoutQuestion(); });
    QObject::connect(&window, &frmMain::closed, &application, &QApplication::quit, Qt::QueuedConnection);
}

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

} // namespace

int Main(int& argc, char* argv[])
{
    const QStringList arguments = argumentsOf(argc, argv);
    if (const auto answer =
            windowlessAnswer(arguments, platform::hasDisplay(QProcessEnvironment::systemEnvironment()))) {
        std::fputs(qPrintable(answer->text), answer->exitStatus == 0 ? stdout : stderr);
        return answer->exitStatus;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vorlant"));
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(QStringLiteral("vorlant"));
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("vorlant"), QIcon(QStringLiteral(":/icons/vorlant.svg"))));
    platform::showTextsPlain();
    const platform::ScreenFit screenFit;
    platform::showWarningsVisibly();
    const platform::PaletteColors colors;
    ProgramContext program(QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(), colors);
    program.settings().m_isReadOnlyRun = arguments.contains(QStringLiteral("--read-only"));
    const platform::SingleInstance instance(QCoreApplication::applicationFilePath());
    if (program.settings().m_bPrevInstance && !instance.isFirst()) {
        reportStartedAlready(program.library(), instance);
        return 0;
    }
    const platform::TerminationSignals endRequest; // one that comes while the window is made waits for it
    frmMain window(program);
    endWith(application, endRequest, window);
    window.show();
    window.start();
    return QApplication::exec();
}
