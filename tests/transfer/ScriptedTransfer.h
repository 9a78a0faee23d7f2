#pragma once

#include "ModbusFrame.h"
#include "ScriptedController.h"
#include "TransferFixture.h"

#include <functional>

// The simulated controller behind a line on which a test sees every request and may answer it otherwise.
class ScriptedTransfer : public TransferFixture
{
protected:
    using Reply = std::optional<QByteArray>; // nothing: the controller's own

    ScriptedTransfer() { connectTo("write"); }

    void connectTo(const char* model)
    {
        loadModel(model);
        openEngine(line.device());
    }

    void beDeafTo(int functionCode)
    {
        script = [functionCode](const QByteArray& request) {
            return request.at(1) == static_cast<char>(functionCode) ? Reply(QByteArray()) : Reply();
        };
    }

    // The requests that begin with these digits, from the function code on, without their check value.
    QByteArrayList requests(const char* start = "") const
    {
        QByteArrayList found;
        for (const QByteArray& request : log) {
            if (request.startsWith(start))
                found << request;
        }
        return found;
    }

    clsData& item(const QByteArray& tag) { return *kx.getDataByTag(QLatin1String(tag)); }

    std::function<Reply(const QByteArray& request)> script;
    QByteArrayList log;
    ScriptedController line{[this](const QByteArray& request) {
        touchClock();
        log << request.mid(1, request.size() - 3).toHex();
        const Reply reply = script ? script(request) : Reply();
        return reply ? *reply : controller->answer(request);
    }};
};
