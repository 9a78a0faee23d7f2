#include "MainFiles.h"

#include "MessageBoxPresenter.h"
#include "ProgramFixture.h"
#include "WhenShown.h"
#include "frmMessageBox.h"
#include "vaSpread.h"

#include <QDropEvent>
#include <QMimeData>
#include <QToolButton>

namespace {

const QByteArray kModel = "KX41000000-10A";
const QByteArray kVariant = "KX41011100-10A";

class Files : public ProgramFixture
{
protected:
    QString cell(int row) { return find<platform::vaSpread>("sprMain")->model()->index(row - 1, 0).data().toString(); }
    void enter(const char* text) { Q_EMIT find<platform::vaSpread>("sprMain")->editChanged(1, 2, text); }
    QString messages() { return std::exchange(asked.texts, {}).join(u'|'); } // since the last look
    bool put(const QByteArray& model, const QByteArray& value = "50")
    {
        return soundController::writeFile(file, "[Info]\r\nMODEL=" + model + "\r\n[Data]\r\nMQCODE=" + model +
                                                    "\r\nVQSV1=" + value + "\r\nPQB1=1\r\n");
    }
    QString title() { return window->windowTitle().section(QStringLiteral(" - ["), 1); }

    const QString file = dir.filePath("set.k41");
};

TEST_F(Files, OneFromOutsideBringsItsModelAndIsNoChange)
{
    openSound();
    ASSERT_TRUE(put(kVariant));
    window->start(file);
    EXPECT_EQ(title(), u"KX41011100-10A - set.k41[*]]");
    EXPECT_EQ(cell(2), u"5.0");
    EXPECT_EQ(window->state(), MainState::NoConnection);
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(find<QToolButton>("panelChanges")->isHidden());
    ASSERT_TRUE(put(kModel, "60"));
    window->openGiven(file);
    EXPECT_EQ(title() + u' ' + cell(2), u"KX41000000-10A - set.k41[*]] 6.0");
    trigger("mnuKX_1");
    EXPECT_EQ(title() + u' ' + cell(2), u"KX41000000-10A[*]] 25.8") << "the controller's, asked for nothing";
    enter("7.0");
    asked.answer = MessageResult::kNo;
    const QByteArray models[] = {kModel, kVariant};
    for (const QByteArray& model : models) {
        ASSERT_TRUE(put(model));
        window->openGiven(file);
        EXPECT_EQ(messages() + u' ' + cell(2), u"1 change was not written. Discard it? 7.0");
    }
    asked.answer = MessageResult::kYes;
    ASSERT_TRUE(put(kModel));
    window->openGiven(file);
    EXPECT_EQ(window->state(), MainState::UpToDate) << "over what was read, as ever";
    EXPECT_FALSE(find<QToolButton>("panelChanges")->isHidden());
    messages();
    const std::pair<QByteArray, const char*> refused[] = {{"[Info]\nMODEL=KX99000000-10A\n", "not in the catalogue."},
                                                          {"[Info]\nName=English\n", " is no parameter file."},
                                                          {"\x7f"
                                                           "ELF\0\0",
                                                           "."},
                                                          {"", "is no parameter file."}};
    for (const auto& [content, why] : refused) {
        ASSERT_TRUE(soundController::writeFile(file, content));
        window->openGiven(file);
        EXPECT_TRUE(messages().endsWith(QLatin1String(why))) << why;
        EXPECT_EQ(title() + u' ' + cell(2), u"KX41000000-10A - set.k41[*]] 5.0");
    }
    window->openGiven(dir.filePath("none.k41"));
    EXPECT_TRUE(messages().endsWith(u"none.k41 does not exist or is not a file: choose another one."));
}

TEST_F(Files, OneFromOutsideWaitsUntilTheWindowIsFree)
{
    openWith([this](const QByteArray& request) {
        if (soundController::asksFor(request, "00008000"))
            window->openGiven(file);
        return soundController::reply(request);
    });
    ASSERT_TRUE(put(kModel));
    trigger("mnuKX_1");
    EXPECT_EQ(cell(2), u"25.8") << "the read was not disturbed";
    EXPECT_TRUE(QTest::qWaitFor([&] { return cell(2) == u"5.0"; }));
    const WhenShown<frmMessageBox> asking([&](frmMessageBox& box) {
        ASSERT_TRUE(put(kModel, "60"));
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the file stays where it is";
        QCoreApplication::processEvents();
        EXPECT_EQ(cell(2), u"5.0");
        box.close();
    });
    MessageBoxPresenter(program->library(), window.get()).showMessage("?", MessageStyle::kOkOnly);
    EXPECT_TRUE(QTest::qWaitFor([&] { return cell(2) == u"6.0"; }));
}

TEST_F(Files, CtrlSSavesWithoutAQuestionIntoTheFileThatIsOpen)
{
    openSound(kOffLine);
    FileQuestion question;
    QString chosen = file;
    window->setFileChooser([&](const FileQuestion& asking) {
        question = asking;
        return std::exchange(chosen, QString());
    });
    auto* command = find<QAction>("mnuFile_4");
    EXPECT_EQ(command->shortcut(), QKeySequence(QKeySequence::Save));
    const QString today = program->clock().now().toString("yyyy-MM-dd");
    command->trigger();
    EXPECT_EQ(question.name, QString("KX410 %1").arg(today));
    EXPECT_TRUE(question.save);
    question = {};
    type("5");
    EXPECT_EQ(command->text(), u"Save &to set.k41");
    command->trigger();
    EXPECT_FALSE(question.save || window->isWindowModified());
    EXPECT_EQ(cell(2), u"5.0");
    QFile saved(file);
    EXPECT_TRUE(saved.open(QIODevice::ReadOnly) && saved.readAll().contains("VQSV1=50")) << "what is typed last too";
    ASSERT_TRUE(put(kModel, "90")); // somebody else's
    QFile changed(file);
    ASSERT_TRUE(changed.open(QIODevice::ReadWrite) &&
                changed.setFileTime(QDateTime::fromSecsSinceEpoch(1), QFile::FileModificationTime));
    changed.close();
    command->trigger();
    EXPECT_EQ(question.name, u"set.k41") << "asked";
    open(controller->device(), settingsFile());
    window->setFileChooser([&](const FileQuestion& asking) {
        question = asking;
        return QString();
    });
    trigger("mnuFile_1");
    EXPECT_EQ(question.folder, dir.path()) << "after a restart";
}

} // namespace
