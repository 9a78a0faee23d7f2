#include "TrafficNames.h"

#include "Clock.h"
#include "ControllerState.h"
#include "FrameFields.h"
#include "FrameParameters.h"
#include "clsKX.h"

namespace {

constexpr int kPhaseEnded = 2; // of the loading

} // namespace

TrafficNames::TrafficNames(const clsKX& kx, const ControllerState& controller, const platform::Clock& clock)
    : m_kx(kx), m_controller(controller)
{
    connect(&kx, &clsKX::LoadEvent, this, [this, &clock](int mode) {
        if (mode == kPhaseEnded)
            m_loaded = clock.now().toString(QStringLiteral("yyyy/MM/dd hh:mm:ss.zzz"));
    });
}

QString TrafficNames::of(const QString& stamp, const FrameFields& fields) const
{
    const bool isOfAnother = fields.slave && fields.slave != m_controller.slaveAddress();
    if (m_loaded.isEmpty() || stamp < m_loaded || isOfAnother)
        return {};
    QStringList names = parametersOf(m_kx.data(), fields);
    if (names.size() > kMostNames)
        names = names.mid(0, kMostNames) << QStringLiteral("...");
    return names.join(QStringLiteral(", "));
}
