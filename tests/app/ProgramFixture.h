#pragma once

#include "ProgramContext.h"
#include "RecordingMessages.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "frmMain.h"
#include "vaSpread.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

inline const QByteArray kLastModel = "[Setting]\nLastModelNo=1\nLastModelString=KX41000000-10A\n";
inline const QByteArray kOffLine = kLastModel + "UseCommunicate=True\n";

// The program with its window in a scratch folder. Its messages are recorded and answered at once.
class ProgramFixture : public ::testing::Test
{
protected:
    // The small model with settings, COM1 on a device.
    void open(const QString& device, const QByteArray& settings = kLastModel)
    {
        ASSERT_TRUE(soundController::install(folder, data, settings));
        start(device, std::make_unique<RecordingMessages>(asked));
    }
    void openWith(ScriptedController::Answer reply, const QByteArray& settings = kLastModel)
    {
        controller = ScriptedController::make(reply);
        open(controller->device(), settings);
    }
    void openSound(const QByteArray& settings = kLastModel)
    {
        openWith([](const QByteArray& request) { return soundController::reply(request); }, settings);
    }

    // What is in the folders.
    void start(const QString& device, std::unique_ptr<MessagePresenter> questions)
    {
        window.reset();
        platform::PathMap paths;
        paths.mount(u'C', dir.path());
        program = std::make_unique<ProgramContext>(paths, platform::Folders(paths, folder, data), QProcessEnvironment(),
                                                   colors);
        program->ports().assign(1, device);
        window = std::make_unique<frmMain>(*program, std::move(questions));
        window->show();
    }

    template <class Part> Part* find(const char* name) const { return window->findChild<Part*>(QLatin1String(name)); }
    // At the first parameter, whose editor stays open.
    void type(const QString& text)
    {
        auto* grid = find<platform::vaSpread>("sprMain");
        QCoreApplication::processEvents(); // what was refused is edited again
        grid->setCurrentCell(1, 2);
        QTest::keyClick(grid, Qt::Key_F2);
        auto* line = qobject_cast<QLineEdit*>(grid->indexWidget(grid->currentIndex()));
        line->selectAll();
        QTest::keyClicks(line, text);
    }
    void trigger(const char* action) { find<QAction>(action)->trigger(); }
    QByteArray settingsFile() const
    {
        QFile file(data + "/Vorlan/Vorlant.ini");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
    const QString folder = dir.filePath("Vorlant");
    const QString data = dir.filePath("AppData");
    platform::SystemColors colors;
    RecordingMessages::Record asked;
    std::unique_ptr<ScriptedController> controller;
    std::unique_ptr<ProgramContext> program;
    std::unique_ptr<frmMain> window;
};
