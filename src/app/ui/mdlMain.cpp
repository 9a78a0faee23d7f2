#include "mdlMain.h"

#include "InstanceChannel.h"
#include "PaletteColors.h"
#include "PlainTexts.h"
#include "ProgramContext.h"
#include "ScreenFit.h"
#include "SingleInstance.h"
#include "StartArguments.h"
#include "Terminal.h"
#include "TerminationSignals.h"
#include "VisibleText.h"
#include "frmMain.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <QProcessEnvironment>
#include <QSessionManager>

#include <cstdio>

namespace {

constexpr const char* kActivationToken = "XDG_ACTIVATION_TOKEN";

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

// Starts of one display and one set of settings belong together.
QString sessionOf(const QProcessEnvironment& environment, const ProgramContext& program)
{
    return QStringList{environment.value(QStringLiteral("WAYLAND_DISPLAY")),
                       environment.value(QStringLiteral("DISPLAY")), program.settingsFile()}
        .join(u'\n');
}

// A later start hands over its file, and with the token its right to come to the front.
void takeFilesOf(const platform::InstanceChannel& channel, frmMain& window)
{
    QObject::connect(&channel, &platform::InstanceChannel::received, &window, [&window](const QStringList& words) {
        qputenv(kActivationToken, words.value(1).toUtf8());
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
        window.openGiven(words.value(0));
    });
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
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const StartArguments arguments = StartArguments::parse(argumentsOf(argc, argv), platform::hasDisplay(environment));
    if (arguments.answer) {
        std::fputs(qPrintable(arguments.answer->text), arguments.answer->exitStatus == 0 ? stdout : stderr);
        return arguments.answer->exitStatus;
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
    ProgramContext program(QCoreApplication::applicationDirPath(), environment, colors);
    program.settings().m_isReadOnlyRun = arguments.isReadOnly;
    const platform::SingleInstance instance(QCoreApplication::applicationFilePath());
    if (program.settings().m_bPrevInstance && !instance.isFirst()) {
        reportStartedAlready(program.library(), instance);
        return 0;
    }
    const QString file = arguments.file.isEmpty() ? QString() : QFileInfo(arguments.file).absoluteFilePath();
    const QString socket = instance.socketFile(sessionOf(environment, program));
    const QString token = environment.value(QLatin1String(kActivationToken));
    if (!file.isEmpty() && arguments.isPlain() && platform::InstanceChannel::send(socket, {file, token}))
        return 0;
    const platform::TerminationSignals endRequest; // one that comes while the window is made waits for it
    frmMain window(program);
    endWith(application, endRequest, window);
    platform::InstanceChannel channel;
    takeFilesOf(channel, window);
    if (instance.isFirst() && !channel.listen(socket))
        program.errorLog().LogWrite(QStringLiteral("%1 cannot be listened at: files open in new windows").arg(socket));
    window.show();
    // In the event loop, which a request to end leaves whatever message is open.
    QMetaObject::invokeMethod(
        &window, [&window, &file] { window.start(file); }, Qt::QueuedConnection);
    return QApplication::exec();
}
