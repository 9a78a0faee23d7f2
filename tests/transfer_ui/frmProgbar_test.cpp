#include "frmProgbar.h"

#include "TestMachine.h"
#include "clsLibrary.h"

#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

class Progress : public ::testing::Test
{
protected:
    Progress()
    {
        owner->resize(800, 600);
        owner->show();
    }

    void open(bool disable = true, bool cancelButton = true, int maximum = 5)
    {
        dialog->showModeless(owner.get(), maximum, QStringLiteral("Sending..."), QStringLiteral("Wait"), 7, disable,
                             cancelButton);
    }

    QProgressBar* bar() { return dialog->findChild<QProgressBar*>(QStringLiteral("ProgressBar1")); }
    QPushButton* cancel() { return dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel")); }

    std::unique_ptr<QWidget> owner = std::make_unique<QWidget>();
    std::unique_ptr<frmProgbar> dialog = std::make_unique<frmProgbar>();
    QSignalSpy asked{dialog.get(), &frmProgbar::ProgCancel};
};

TEST_F(Progress, ShowsWhatItIsGiven)
{
    open();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->windowTitle(), u"Sending...");
    EXPECT_EQ(dialog->findChild<QLabel*>(QStringLiteral("Label1"))->text(), u"Wait");
    EXPECT_EQ(bar()->maximum(), 5);
    EXPECT_FALSE(owner->isEnabled());
    EXPECT_EQ(dialog->windowHandle()->transientParent(), owner->windowHandle());
    EXPECT_TRUE(cancel()->isVisible());
    const QPoint apart = dialog->frameGeometry().center() - owner->frameGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 8) << "over its owner, but for the window frames";
}

struct Ending
{
    const char* name;
    std::function<void(std::unique_ptr<frmProgbar>& dialog)> end;
};

class ProgressEnding : public Progress, public ::testing::WithParamInterface<Ending>
{};

TEST_P(ProgressEnding, EnablesTheOwner)
{
    open();
    ASSERT_FALSE(owner->isEnabled());
    GetParam().end(dialog);
    EXPECT_TRUE(owner->isEnabled());
    EXPECT_EQ(asked.count(), 0) << "ending is not cancelling";
}

INSTANTIATE_TEST_SUITE_P(Ways, ProgressEnding,
                         ::testing::Values(Ending{"Unloaded", [](auto& dialog) { dialog->unloadForm(); }},
                                           Ending{"Destroyed", [](auto& dialog) { dialog.reset(); }},
                                           Ending{"Done", [](auto& dialog) { dialog->done(0); }}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Progress, OwnerMayGoFirst)
{
    open();
    owner.reset();
    dialog->setPos(3);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(asked.count(), 1);
    dialog->unloadForm();
    EXPECT_FALSE(dialog->isVisible());
}

struct Asking
{
    const char* name;
    std::function<void(frmProgbar& dialog, QPushButton& cancel)> ask;
};

class ProgressCancel : public Progress, public ::testing::WithParamInterface<Asking>
{};

TEST_P(ProgressCancel, AsksOnceAndStays)
{
    open();
    GetParam().ask(*dialog, *cancel());
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(asked[0][0].toInt(), 7);
    EXPECT_TRUE(dialog->isVisible()) << "the owner decides when it ends";
    EXPECT_FALSE(owner->isEnabled());
    GetParam().ask(*dialog, *cancel());
    EXPECT_EQ(asked.count(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ProgressCancel,
    ::testing::Values(Asking{"Button", [](auto&, auto& cancel) { QTest::mouseClick(&cancel, Qt::LeftButton); }},
                      Asking{"Escape", [](auto& dialog, auto&) { QTest::keyClick(&dialog, Qt::Key_Escape); }},
                      Asking{"CloseButton", [](auto& dialog, auto&) { dialog.close(); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Progress, PositionPastTheEndRaisesTheMaximum)
{
    open();
    dialog->setPos(9);
    EXPECT_EQ(bar()->maximum(), 9);
    EXPECT_EQ(bar()->value(), 9);
    dialog->setPos(2);
    EXPECT_EQ(bar()->maximum(), 9);
    EXPECT_EQ(bar()->value(), 2);
    dialog->setPos(0);
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(Progress, SpeaksTheLanguageInUse)
{
    TestMachine box;
    box.context.languageFile = QStringLiteral("XX.txt");
    clsLibrary library(box.context);
    QFile file(box.path(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Language]\r\nSending...=送信中...\r\nWait=お待ちください。\r\n"
               "[Caption]\r\nfrmProgbar-cmdCancel-0=キャンセル\r\n");
    file.close();
    dialog->setLib(&library);
    open();
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("送信中..."));
    EXPECT_EQ(dialog->findChild<QLabel*>(QStringLiteral("Label1"))->text(), QStringLiteral("お待ちください。"));
    EXPECT_EQ(cancel()->text(), QStringLiteral("キャンセル"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("frmProgbar-Label1-0=It is forwarding it. Please wait for a while."));
}

TEST_F(Progress, MayEndWhileItShowsAStep)
{
    open();
    QTimer::singleShot(0, owner.get(), [this] { dialog.reset(); });
    dialog->setPos(1);
    EXPECT_TRUE(owner->isEnabled());
}

TEST_F(Progress, NextOwnerFreesTheOneBefore)
{
    open();
    QWidget other;
    dialog->showModeless(&other, 1, QString(), QString(), 0, true, false);
    EXPECT_TRUE(owner->isEnabled());
    EXPECT_FALSE(other.isEnabled());
    dialog->unloadForm();
    EXPECT_TRUE(other.isEnabled());
}

TEST_F(Progress, GrowsForALongText)
{
    open();
    dialog->setText(QStringLiteral("no sound answer to Main: Direct 8000, attempt 3 of 6; ").repeated(8));
    QCoreApplication::processEvents();
    const auto* label = dialog->findChild<QLabel*>(QStringLiteral("Label1"));
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
}

} // namespace
