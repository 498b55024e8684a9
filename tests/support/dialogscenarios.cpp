#include "dialogscenarios.h"

#include <QFile>

// The files live in this static library; nothing else would pull them in.
static void initDialogScenarios()
{
    Q_INIT_RESOURCE(dialog_scenarios);
}

namespace DialogScenarios {

namespace {

QByteArray scenario(const char* name)
{
    initDialogScenarios();
    QFile file(QStringLiteral(":/dialog-scenarios/%1.json").arg(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no scenario %s", name);
    return file.readAll();
}

} // namespace

const QByteArray ThreeAndTwoMissing = scenario("three-and-two-missing");
const QByteArray Five = scenario("five");
const QByteArray EveryFeature = scenario("every-feature");

QByteArray briskbox(int cameras)
{
    QByteArray list;
    for (int i = 1; i <= cameras; ++i)
        list += QByteArray(i > 1 ? ", " : "") + "{ \"serial\": \"2031" + QByteArray::number(i) + "\" }";
    return R"({
    "protocol_version": "1.27.0", "system_model": "BRISKBOX",
    "models": { "0x0B01": "BRISKBOX3" },
    "camera_defaults": { "model": "0x0B01", "flash_intensity": 5, "max_flash_intensity": 50,
                         "has_modulated_flash": true, "has_static_reflex_skip": true, "static_reflex_skip": false },
    "cameras": [ )" + list + " ]\n}";
}

} // namespace DialogScenarios
