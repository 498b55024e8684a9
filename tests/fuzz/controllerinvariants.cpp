#include "controllerinvariants.h"

#include "controllerstate.h"
#include "wireformat.h"

#include <QRegularExpression>

#include <cstdio>
#include <cstdlib>

namespace {

QString cameraProblem(const ControllerState& state, const CameraState& camera)
{
    if (camera.flashIntensity.value < 0 || camera.flashIntensity.value > camera.maxFlashIntensity
        || camera.maxFlashIntensity > camera.maxMaxFlashIntensity)
        return QStringLiteral("flash outside 0..maximum..unlimited maximum");
    if (camera.markerMinSize.value > camera.markerMaxSize.value || camera.markerMaxSize.value > camera.markerSizeLimit)
        return QStringLiteral("marker sizes out of order");
    if (camera.markerMaxNumber.value < 0 || camera.markerMaxNumber.value > CameraState::MarkerMaxNumberLimit)
        return QStringLiteral("marker number out of range");
    if (camera.modes.isEmpty() || camera.modeIndex(camera.mode.value) < 0)
        return QStringLiteral("unknown current mode");
    if (camera.sensorGain.value < camera.minSensorGain || camera.sensorGain.value > camera.maxSensorGain)
        return QStringLiteral("gain out of range");
    if (!camera.sensorExposureAuto.value && camera.sensorExposureMs.value > camera.maxSensorExposureMs())
        return QStringLiteral("exposure above the mode's maximum");
    if (camera.syncChannel.value < 0 || camera.syncChannel.value > state.syncCardChannels)
        return QStringLiteral("sync channel the card lacks");
    if (!state.displaySettings.isEmpty() && !camera.displaySettings.contains(camera.displaySetting.value))
        return QStringLiteral("display setting the camera lacks");
    for (const double fraction : {camera.displayIntensity.value, camera.displayRingIntensity.value,
                                  camera.markerThreshold.value}) {
        if (!(fraction >= 0.0 && fraction <= 1.0))
            return QStringLiteral("fraction outside 0..1");
    }
    return QString();
}

} // namespace

QString brokenInvariant(const ControllerState& state)
{
    for (int i = 0; i < state.cameras.size(); ++i) {
        const QString problem = cameraProblem(state, state.cameras.at(i));
        if (!problem.isEmpty())
            return QStringLiteral("camera %1: %2").arg(i + 1).arg(problem);
    }
    return QString();
}

QString badReply(const QByteArray& request, const QByteArray& reply)
{
    if (WireFormat::holdsControlCharacter(reply))
        return QStringLiteral("control character in the reply");
    if (reply.startsWith("quarvo2 err ")) {
        static const QRegularExpression error(
            QRegularExpression::anchoredPattern(QStringLiteral("quarvo2 err [1-7] \"[^\"]*\"")));
        return error.match(QString::fromLatin1(reply)).hasMatch() ? QString() : QStringLiteral("malformed error");
    }
    if (request.startsWith("quarvo2 set "))
        return reply == request ? QString() : QStringLiteral("a set not echoed");
    const QByteArray answered = "quarvo2 set " + request.mid(12);
    return request.startsWith("quarvo2 get ") && (reply == answered || reply.startsWith(answered + ' '))
               ? QString()
               : QStringLiteral("a get answered for something else");
}

void fuzzFailure(const char* what, const QString& detail)
{
    fprintf(stderr, "%s: %s\n", what, qPrintable(detail.left(2000)));
    abort();
}
