#include "mdlMain.h"

#include "PaletteColors.h"
#include "ProgramContext.h"
#include "TerminationSignals.h"
#include "frmMain.h"

#include <QApplication>

int Main(int& argc, char* argv[])
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vorlant"));
    QApplication::setQuitOnLastWindowClosed(false);
    const platform::PaletteColors colors;
    ProgramContext program(QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(), colors);
    frmMain window(program);
    platform::TerminationSignals endRequest;
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &window, &frmMain::closeWithoutQuestion);
    QObject::connect(&window, &frmMain::closed, &application, &QApplication::quit, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}
