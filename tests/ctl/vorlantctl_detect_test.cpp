#include "VorlantCtlFixture.h"

#include <csignal>

namespace {

struct Detect
{
    const char* name;
    const char* first; // at FBC0; empty for silence
    const char* second;
    int status;
    const char* output;
    const char* error; // part of the one line; empty for none
};

void PrintTo(const Detect& row, std::ostream* out)
{
    *out << row.name;
}

class VorlantCtlDetect : public VorlantCtl, public ::testing::WithParamInterface<Detect>
{
protected:
    int detectWith(const QStringList& more = {})
    {
        return run(QStringList{QStringLiteral("--port"), controller->device(), QStringLiteral("detect")} + more);
    }
};

TEST_P(VorlantCtlDetect, PrintsTheModel)
{
    plug([](const QByteArray& request) {
        const QByteArray model = soundController::asksFor(request, "0000FBC8") ? GetParam().second : GetParam().first;
        return model.isEmpty() ? QByteArray()
                               : soundController::rtu(request.left(2) + QByteArray::fromHex("000E") + model);
    });
    EXPECT_EQ(detectWith({QStringLiteral("--timeout"), QStringLiteral("1")}), GetParam().status);
    EXPECT_EQ(output.toStdString(), GetParam().output);
    EXPECT_TRUE(errors.contains(GetParam().error)) << errors.toStdString();
    EXPECT_EQ(errors.count('\n'), GetParam().status == 0 ? 0 : 1) << errors.toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, VorlantCtlDetect,
                         ::testing::Values(Detect{"Known", "KX41012345-20B", "", 0, "KX41012345-20B KX410\n", ""},
                                           Detect{"AtTheSecondPlace", "ABCDEFGHIJKLMN", "KX41000000-10A", 0,
                                                  "KX41000000-10A KX410\n", ""},
                                           Detect{"NotInTheCatalogue", "KX99900000-10A", "", 4, "KX99900000-10A\n",
                                                  "lacks \"KX99900000-10A\""},
                                           Detect{"NotPrintable", "KX\x01\x02\x03\x04\x05\x06\x07\x0e\x0f\x10\x11\x1b",
                                                  "", 4, "KX????????????\n", "KX??"},
                                           Detect{"Silent", "", "", 3, "", "Timeout"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(VorlantCtlDetect, MissingPort)
{
    EXPECT_EQ(run({QStringLiteral("--port"), path("no-adapter"), QStringLiteral("detect")}), 3);
    expectOneLineAbout("no-adapter");
}

TEST_F(VorlantCtlDetect, InterruptEndsTheWait)
{
    plug([this](const QByteArray&) {
        kill(static_cast<pid_t>(process.processId()), SIGINT);
        return QByteArray();
    });
    EXPECT_EQ(detectWith(), 3);
    expectOneLineAbout("interrupted");
}

} // namespace
