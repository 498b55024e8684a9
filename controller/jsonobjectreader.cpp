#include "jsonobjectreader.h"

JsonObjectReader::JsonObjectReader(const QJsonObject& object, const QStringList& path, ScenarioProblem* problem)
    : m_object(object), m_path(path), m_problem(problem)
{
}

bool JsonObjectReader::fail(const QString& key, const QString& reason)
{
    if (ok()) {
        m_problem->path = key.isEmpty() ? m_path : pathOf(key);
        m_problem->reason = reason;
    }
    return false;
}

bool JsonObjectReader::failKey(const QString& key, const QString& reason)
{
    if (ok())
        m_problem->aboutKey = true;
    return fail(key, reason);
}

bool JsonObjectReader::checkKeys(const QStringList& known)
{
    for (auto it = m_object.constBegin(); ok() && it != m_object.constEnd(); ++it) {
        if (!known.contains(it.key()))
            failKey(it.key(), QStringLiteral("unknown key %1"));
    }
    return ok();
}

JsonObjectReader JsonObjectReader::object(const QString& key)
{
    const QJsonValue value = m_object.value(key);
    if (has(key) && !value.isObject())
        fail(key, QStringLiteral("expected an object"));
    return JsonObjectReader(value.toObject(), pathOf(key), m_problem);
}

QJsonArray JsonObjectReader::array(const QString& key)
{
    const QJsonValue value = m_object.value(key);
    if (has(key) && !value.isArray())
        fail(key, QStringLiteral("expected an array"));
    return value.toArray();
}

QVector<JsonObjectReader> JsonObjectReader::objects(const QString& key)
{
    QVector<JsonObjectReader> readers;
    const QJsonArray elements = array(key);
    for (int i = 0; ok() && i < elements.size(); ++i) {
        const QStringList path = pathOf(key) + QStringList(QString::number(i));
        if (!elements.at(i).isObject()) {
            m_problem->path = path;
            m_problem->reason = QStringLiteral("expected an object");
            break;
        }
        readers.append(JsonObjectReader(elements.at(i).toObject(), path, m_problem));
    }
    return readers;
}
