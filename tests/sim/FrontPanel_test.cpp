#include "FrontPanel.h"

#include "SimulatedFixture.h"

namespace {

class Panel : public SimulatedFixture
{
protected:
    // Two bytes from 8000 on and the first of the model string.
    std::string memory() const
    {
        std::string bytes;
        for (const QByteArray& line : controller->state().split('\n')) {
            for (const char* place : {"MEM 8000 ", "MEM 8001 ", "MEM FBC0 "})
                bytes += line.startsWith(place) ? line.mid(9).toStdString() : "";
        }
        return bytes;
    }

    std::unique_ptr<SimulatedController> controller = makeController(0);
    FrontPanel panel{*controller, box.clock};
};

TEST_F(Panel, ChangesTheMemoryAtItsTime)
{
    for (const char* poke : {"8001=03@2.5", "fbc0=5a@86400", "8000=AABB@2.5", "8000=0a@0", "8000=0B0C@0.001"})
        EXPECT_EQ(panel.add(poke).error(), QString());
    box.clock.advance(5000);
    EXPECT_EQ(memory(), "01024B") << "not started";
    panel.start();
    EXPECT_EQ(memory(), "0A024B");
    const std::pair<int, const char*> steps[] = {
        {1, "0B0C4B"}, {2498, "0B0C4B"}, {1, "AABB4B"}, {86397499, "AABB4B"}, {1, "AABB5A"}};
    for (const auto& [ms, bytes] : steps) {
        box.clock.advance(ms);
        EXPECT_EQ(memory(), bytes) << ms;
    }
    EXPECT_EQ(controller->answer(rtu("01 42 00 00008000 02")).toHex(), rtu("01 42 00 02 AABB").toHex());
}

TEST_F(Panel, ObeysLines)
{
    EXPECT_EQ(panel.obey("poke 8000=0708\r").error(), QString());
    EXPECT_EQ(memory(), "07084B");
}

TEST_F(Panel, RefusesWhatMakesNoSense)
{
    const QString longest = "8000=" + QString("00").repeated(120);
    const std::pair<QString, const char*> rows[] = {{"", "not"},
                                                    {"8000", "not"},
                                                    {"8000=", "not"},
                                                    {"8000=0", "not"},
                                                    {"8000=0G", "not"},
                                                    {"=00", "not"},
                                                    {"0x8000=00", "not"},
                                                    {"123456789=00", "not"},
                                                    {"8000=00 01", "not"},
                                                    {longest + "00", "not"},
                                                    {longest, "no memory at 8008"},
                                                    {"7FFF=0000", "no memory at 7FFF"},
                                                    {"FFFFFFFF=0000", "no memory at FFFFFFFF"}};
    const std::string before = memory();
    for (const auto& [text, reason] : rows) {
        EXPECT_TRUE(panel.add(text + "@1").error().contains(reason)) << qPrintable(text);
        EXPECT_TRUE(panel.obey("poke " + text).error().contains(reason)) << qPrintable(text);
    }
    for (const char* seconds : {"", "@", "@-1", "@86400.1", "@nan", "@1e3", "@1@2", "@1\n"})
        EXPECT_TRUE(panel.add("8000=00" + QString(seconds)).error().contains(u"not ADDRESS=BYTES@SECONDS")) << seconds;
    for (const char* line : {"", "8000=00", "peek 8000=00", "poke 8000=00@1", "POKE 8000=00"})
        EXPECT_TRUE(panel.obey(line).error().contains(u"not poke ADDRESS=BYTES")) << line;
    panel.start();
    box.clock.advance(2000);
    EXPECT_EQ(memory(), before);
}

} // namespace
