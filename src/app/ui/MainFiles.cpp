#include "MainFiles.h"

#include "MainMenus.h"
#include "ParameterFiles.h"
#include "TransferEngine.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>

#include <utility>

namespace {

// Empty unless it is one file of this machine.
QString fileIn(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

} // namespace

MainFiles::MainFiles(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    ParameterFiles& files = m_parts.files;
    const MainMenus& menus = m_parts.menus;
    connect(menus.open, &QAction::triggered, this, [this] { m_parts.files.openDataFile(m_parts.controller.state()); });
    connect(menus.saveTo, &QAction::triggered, &files, &ParameterFiles::save);
    connect(menus.save, &QAction::triggered, &files, &ParameterFiles::saveDataFile);
    connect(menus.clearRecent, &QAction::triggered, &files, &ParameterFiles::clearRecent);
    connect(menus.recent, &QMenu::aboutToShow, this, &MainFiles::showRecent);
    connect(&files, &ParameterFiles::fileChanged, this, &MainFiles::showFile);
    connect(&m_parts.engine, &TransferEngine::activityChanged, this, &MainFiles::openWaiting, Qt::QueuedConnection);
    m_parts.window.setAcceptDrops(true);
    m_parts.window.installEventFilter(this);
}

void MainFiles::openGiven(const QString& file)
{
    m_waiting = file;
    openWaiting();
}

bool MainFiles::isFree() const
{
    return m_parts.window.isEnabled() && QApplication::activeModalWidget() == nullptr && !m_parts.engine.isBusy() &&
           !m_parts.engine.isClosing();
}

void MainFiles::openWaiting()
{
    if (!m_waiting.isEmpty() && isFree())
        m_parts.files.openGiven(std::exchange(m_waiting, QString()), m_parts.controller.state());
}

bool MainFiles::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowUnblocked: // what was asked has been answered
    case QEvent::EnabledChange:
        QMetaObject::invokeMethod(this, &MainFiles::openWaiting, Qt::QueuedConnection);
        break;
    case QEvent::DragEnter:
    case QEvent::Drop:
        openDropped(static_cast<QDropEvent&>(*event));
        return true;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// The program that the file is dragged from waits for the answer: the questions come later.
void MainFiles::openDropped(QDropEvent& event)
{
    const QString file = fileIn(*event.mimeData());
    if (file.isEmpty())
        return;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, file] { openGiven(file); }, Qt::QueuedConnection);
}

void MainFiles::translate(const QString& caption)
{
    m_caption = caption;
    m_saveCaption = m_parts.menus.saveTo->text();
    showFile();
}

void MainFiles::showFile()
{
    showTitle();
    enableRecent();
    QString name = platform::visibleText(QFileInfo(m_parts.files.file()).fileName());
    const QString named = m_parts.library.tranStr(QStringLiteral("Save &to %1"));
    m_parts.menus.saveTo->setText(name.isEmpty() ? m_saveCaption : named.arg(name.replace(u'&', QStringLiteral("&&"))));
}

void MainFiles::showTitle()
{
    const QString name = QFileInfo(m_parts.files.file()).fileName();
    m_parts.window.setWindowTitle(windowTitleText(m_caption, m_parts.controller.model(), name));
    m_parts.window.setWindowModified(m_parts.files.isChanged());
}

void MainFiles::enable(bool hasGrid)
{
    for (QAction* action : {m_parts.menus.open, m_parts.menus.save, m_parts.menus.saveTo})
        action->setEnabled(hasGrid);
    enableRecent();
}

void MainFiles::enableRecent()
{
    m_parts.menus.recent->setEnabled(m_parts.menus.open->isEnabled() && !m_parts.files.recent().files().isEmpty());
}

// When the menu is about to be looked at.
void MainFiles::showRecent()
{
    m_parts.menus.showRecent(m_parts.files.recent().files(), [this](const QString& file) {
        m_parts.files.openRecent(file, m_parts.controller.state());
    });
}
