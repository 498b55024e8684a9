#include "VersionInfo.h"

#include <QStringList>

VersionInfo::VersionInfo(int major, int minor, int patch)
    : ma(major), mi(minor), pa(patch)
{
}

void VersionInfo::setVer(int major, int minor, int patch)
{
    ma = major;
    mi = minor;
    pa = patch;
}

bool VersionInfo::fromString(const QString& text, bool* ok)
{
    QString s = text.trimmed();
    if (s.startsWith(QLatin1Char('v')) || s.startsWith(QLatin1Char('V')))
        s.remove(0, 1);
    const QStringList parts = s.split(QLatin1Char('.'));
    bool good = parts.size() == 2 || parts.size() == 3;
    int values[3] = {0, 0, 0};
    for (int i = 0; good && i < parts.size(); ++i)
        values[i] = parts.at(i).toInt(&good);
    if (good)
        setVer(values[0], values[1], values[2]);
    if (ok)
        *ok = good;
    return good;
}

QString VersionInfo::toString() const
{
    return QStringLiteral("%1.%2.%3").arg(ma).arg(mi).arg(pa);
}

int VersionInfo::compare(const VersionInfo& other) const
{
    if (ma != other.ma)
        return ma < other.ma ? -1 : 1;
    if (mi != other.mi)
        return mi < other.mi ? -1 : 1;
    if (pa != other.pa)
        return pa < other.pa ? -1 : 1;
    return 0;
}

bool VersionInfo::operator==(const VersionInfo& other) const { return compare(other) == 0; }
bool VersionInfo::operator!=(const VersionInfo& other) const { return compare(other) != 0; }
bool VersionInfo::operator>(const VersionInfo& other) const { return compare(other) > 0; }
bool VersionInfo::operator>=(const VersionInfo& other) const { return compare(other) >= 0; }
bool VersionInfo::operator<(const VersionInfo& other) const { return compare(other) < 0; }
bool VersionInfo::operator<=(const VersionInfo& other) const { return compare(other) <= 0; }
