#include "FindBar.h"

#include "ScreenFixture.h"
#include "vaSpread.h"

#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace {

class Bar : public ScreenFixture
{
protected:
    Bar()
    {
        settings.m_bComm = true;
        fill({"A1", "A2", "B1"});
        top.show();
        top.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&top));
    }
    void fill(const QStringList& tags)
    {
        QStringList rows;
        for (const QString& tag : tags)
            rows << tag + "|Data|1";
        load(screenOf(itemKeys(rows)));
        kx.refreshSpread(false, nullptr);
    }
    template <class Part> Part* part(const char* name) { return bar.findChild<Part*>(QLatin1String(name)); }
    QString state()
    {
        QCoreApplication::processEvents();
        return QString("%1: %2").arg(sheet.currentIndex().row() + 1).arg(part<QLabel>("findCount")->text());
    }
    void press(const char* field, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(part<QWidget>(field), key, modifiers);
    }

    QWidget top;
    platform::vaSpread sheet{&top};
    FindBar& bar = *[this] {
        sheet.setGrid(&grid);
        return new FindBar(kx, sheet, &top);
    }();
};

TEST_F(Bar, StepsThroughWhatIsTyped)
{
    sheet.setCurrentCell(1, 2);
    bar.openText();
    QTest::keyClicks(part<QLineEdit>("findText"), "a");
    EXPECT_EQ(state(), u"2: 2 of 2");
    press("findText", Qt::Key_Return);
    EXPECT_EQ(state(), u"1: 1 of 2");
    press("findText", Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(state(), u"2: 2 of 2");
    sheet.setCurrentCell(1, 3);
    EXPECT_EQ(state(), u"3: 2 found");
    QTest::keyClicks(part<QLineEdit>("findText"), "x");
    EXPECT_EQ(state(), u"3: Not found");
    press("findText", Qt::Key_Escape);
    EXPECT_TRUE(bar.isHidden() && sheet.hasFocus());
}

TEST_F(Bar, FollowsEditsAndAnotherModel)
{
    bar.openText();
    part<QComboBox>("findScope")->setCurrentIndex(1);
    EXPECT_EQ(state(), u"1: Not found");
    kx.refreshCell(item("A2"));
    EXPECT_EQ(state(), u"1: 1 found");
    part<QComboBox>("findScope")->setCurrentIndex(0);
    QTest::keyClicks(part<QLineEdit>("findText"), "c");
    fill({"C1", "C2", "C3"});
    EXPECT_EQ(state().section(u' ', 1), u"3 found");
}

TEST_F(Bar, GoesToATagThatIsCompleted)
{
    bar.openTag();
    QTest::keyClicks(part<QLineEdit>("findTag"), "b");
    EXPECT_EQ(part<QLineEdit>("findTag")->completer()->completionCount(), 1);
    press("findTag", Qt::Key_Return);
    EXPECT_EQ(state().left(1), u"3");
    bar.openTag();
    QTest::keyClicks(part<QLineEdit>("findTag"), "Z");
    press("findTag", Qt::Key_Return);
    EXPECT_EQ(state(), u"3: No such tag");
}

} // namespace
