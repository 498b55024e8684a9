#ifndef VERSIONINFO_H
#define VERSIONINFO_H

#include <QMetaType>
#include <QString>

// A version triple major.minor.patch as the controller reports it. A patch of -1
// stands for "any patch" in feature gates: (1, 9, -1) is passed by every 1.9.x.
class VersionInfo
{
public:
    VersionInfo(int major = 0, int minor = 0, int patch = 0);

    void setVer(int major, int minor, int patch);
    // Parses "1.27", "1.27.0" or "v1.27.0"; leaves the version unchanged and sets *ok
    // to false on anything else.
    bool fromString(const QString& text, bool* ok = nullptr);
    QString toString() const;

    bool operator==(const VersionInfo& other) const;
    bool operator!=(const VersionInfo& other) const;
    bool operator>(const VersionInfo& other) const;
    bool operator>=(const VersionInfo& other) const;
    bool operator<(const VersionInfo& other) const;
    bool operator<=(const VersionInfo& other) const;

    int major() const { return ma; }
    int minor() const { return mi; }
    int patch() const { return pa; }

private:
    int compare(const VersionInfo& other) const;

    int ma;
    int mi;
    int pa;
};

// Carried in QVariant by whoever passes versions around, test tables among them.
Q_DECLARE_METATYPE(VersionInfo)

#endif // VERSIONINFO_H
