#ifndef JSONOBJECTREADER_H
#define JSONOBJECTREADER_H

#include "jsonconverters.h"
#include "scenarioproblem.h"
#include "setting.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

// Reads typed values from one object of a scenario document. Absent keys leave the
// target as it is; the first wrong value is recorded with its path and stops the
// reading (every later read returns false).
class JsonObjectReader
{
public:
    JsonObjectReader(const QJsonObject& object, const QStringList& path, ScenarioProblem* problem);

    bool ok() const { return !m_problem->found(); }
    bool has(const QString& key) const { return m_object.contains(key); }
    QStringList keys() const { return m_object.keys(); }
    QStringList pathOf(const QString& key) const { return m_path + QStringList(key); }
    // Records a problem with the value of key (the object itself for an empty key).
    bool fail(const QString& key, const QString& reason);
    // Records a problem with the key itself; the reason's %1 shows it.
    bool failKey(const QString& key, const QString& reason);
    // Refuses keys that are not listed, so that a misspelt key does not go unnoticed.
    bool checkKeys(const QStringList& known);

    // The object under key (an empty one when absent).
    JsonObjectReader object(const QString& key);
    // The elements of the array under key, each as an object reader.
    QVector<JsonObjectReader> objects(const QString& key);
    // The array under key (an empty one when absent).
    QJsonArray array(const QString& key);

    template <typename T>
    bool read(const QString& key, T* out, const JsonConverter<T>& convert)
    {
        if (!ok())
            return false;
        if (!has(key))
            return true;
        QString why;
        return convert(m_object.value(key), out, &why) || fail(key, why);
    }

    // A setting is either one value (its default too) or {"value": ..., "default": ...}.
    template <typename T>
    bool readSetting(const QString& key, Setting<T>* out, const JsonConverter<T>& convert)
    {
        if (!ok())
            return false;
        if (!m_object.value(key).isObject()) {
            T value = out->value;
            if (!read(key, &value, convert))
                return false;
            if (has(key))
                out->assign(value);
            return true;
        }
        JsonObjectReader pair = object(key);
        return pair.checkKeys({QStringLiteral("value"), QStringLiteral("default")})
               && pair.read(QStringLiteral("value"), &out->value, convert)
               && pair.read(QStringLiteral("default"), &out->defaultValue, convert);
    }

private:
    QJsonObject m_object;
    QStringList m_path;
    ScenarioProblem* m_problem;
};

#endif // JSONOBJECTREADER_H
