#include "outlierfinder.h"

#include "settingvalue.h"
#include "snapshotsettings.h"

#include <QPair>
#include <QStringList>

namespace {

// Columns as wide as their widest cell, two blanks apart, the last one unpadded.
QString formatTable(const QVector<QStringList>& rows)
{
    QVector<int> widths(rows.first().size(), 0);
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths[i], row.at(i).size());
    }
    QString out;
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i)
            out += i + 1 < row.size() ? row.at(i).leftJustified(widths[i] + 2) : row.at(i) + QLatin1Char('\n');
    }
    return out;
}

} // namespace

OutlierFinder::OutlierFinder(const SystemSnapshot& snapshot)
{
    QStringList models;
    for (const CameraSnapshot& camera : snapshot.cameras) {
        if (!models.contains(camera.model))
            models << camera.model;
    }
    for (const QString& model : models) {
        QVector<const CameraSnapshot*> cameras;
        for (const CameraSnapshot& camera : snapshot.cameras) {
            if (camera.model == model)
                cameras << &camera;
        }
        findInModel(model, cameras);
    }
}

void OutlierFinder::findInModel(const QString& model, const QVector<const CameraSnapshot*>& cameras)
{
    for (const SettingDefinition& definition : SnapshotSettings::all()) {
        const QString name = QLatin1String(definition.name);
        QVector<QPair<QJsonValue, int>> counts;
        int total = 0;
        for (const CameraSnapshot* camera : cameras) {
            const QJsonValue value = camera->value(name);
            if (value.isUndefined())
                continue;
            ++total;
            int i = 0;
            while (i < counts.size() && counts.at(i).first != value)
                ++i;
            if (i == counts.size())
                counts.append({value, 0});
            ++counts[i].second;
        }
        int best = -1;
        bool tie = false;
        for (int i = 0; i < counts.size(); ++i) {
            if (best < 0 || counts.at(i).second > counts.at(best).second) {
                best = i;
                tie = false;
            } else if (counts.at(i).second == counts.at(best).second) {
                tie = true;
            }
        }
        // Without one value that most cameras share there is no odd camera out to name.
        if (best < 0 || tie || counts.size() < 2)
            continue;
        for (const CameraSnapshot* camera : cameras) {
            const QJsonValue value = camera->value(name);
            if (!value.isUndefined() && value != counts.at(best).first)
                m_outliers.append({model, name, camera->label(), value, counts.at(best).first, counts.at(best).second, total});
        }
    }
}

QString OutlierFinder::table() const
{
    if (m_outliers.isEmpty())
        return QString();
    QVector<QStringList> rows{{QStringLiteral("model"), QStringLiteral("setting"), QStringLiteral("camera"),
                               QStringLiteral("value"), QStringLiteral("most cameras")}};
    for (const Outlier& outlier : m_outliers)
        rows.append({outlier.model, outlier.setting, outlier.camera, SettingValue::shown(outlier.value),
                     QStringLiteral("%1 (%2 of %3)")
                         .arg(SettingValue::shown(outlier.usual), QString::number(outlier.usualCount),
                              QString::number(outlier.total))});
    return formatTable(rows);
}
