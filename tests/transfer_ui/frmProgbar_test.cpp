#include "frmProgbar.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(Progress, OpensShowsAsksAndCloses)
{
    auto owner = std::make_unique<QWidget>();
    owner->resize(800, 600);
    owner->show();
    auto dialog = std::make_unique<frmProgbar>();
    const auto open = [&](QWidget& over) {
        dialog->showModeless(&over, 5, QStringLiteral("Sending..."), QStringLiteral("Wait"), 7, true, true);
    };
    const auto& bar = *dialog->findChild<QProgressBar*>(QStringLiteral("ProgressBar1"));
    const auto& label = *dialog->findChild<QLabel*>(QStringLiteral("Label1"));
    QSignalSpy asked(dialog.get(), &frmProgbar::ProgCancel);
    open(*owner);
    EXPECT_TRUE(dialog->isVisible() && !dialog->isModal() && !owner->isEnabled());
    EXPECT_EQ(dialog->windowTitle() + label.text(), u"Sending...Wait");
    EXPECT_EQ(bar.maximum(), 5);
    const QPoint apart = dialog->frameGeometry().center() - owner->frameGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 8) << "over its owner, but for the window frames";
    dialog->setPos(9);
    dialog->setPos(2);
    EXPECT_EQ(bar.maximum(), 9) << "a position past the end raises it";
    EXPECT_EQ(bar.value(), 2);
    dialog->setText(QStringLiteral("no valid reply to Main: Direct 8000, attempt 3 of 6; ").repeated(8));
    QCoreApplication::processEvents();
    EXPECT_GE(label.height(), label.heightForWidth(label.width())) << "it grows with its text";

    auto& cancel = *dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel"));
    QTest::mouseClick(&cancel, Qt::LeftButton);
    EXPECT_TRUE(!cancel.isEnabled() && cancel.text() == u"Stopping...");
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    dialog->close();
    ASSERT_EQ(asked.count(), 3);
    EXPECT_EQ(asked[0][0].toInt(), 7);
    EXPECT_TRUE(dialog->isVisible() && !owner->isEnabled()) << "the owner decides when it ends";

    QWidget other;
    open(other);
    EXPECT_TRUE(cancel.isEnabled() && cancel.text() == u"Cancel") << "for the next work";
    EXPECT_TRUE(owner->isEnabled() && !other.isEnabled()) << "the next owner frees the one before";
    dialog->unloadForm();
    EXPECT_TRUE(other.isEnabled() && !dialog->isVisible());
    open(*owner);
    dialog->done(0);
    EXPECT_TRUE(owner->isEnabled());
    open(*owner);
    owner.reset();
    dialog->setPos(3);
    open(other);
    dialog.reset();
    EXPECT_TRUE(other.isEnabled());
}

} // namespace
