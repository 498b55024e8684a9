// Version texts and the protocol gates the module switches its features by: a gate a.b
// is passed by every a.b.x and everything above, the minor deciding before the patch
// and the major before both.
#include "BackendVersions.h"
#include "VersionInfo.h"

#include <QtTest>

class tst_VersionInfo : public QObject
{
    Q_OBJECT

private slots:
    void gate_data()
    {
        QTest::addColumn<VersionInfo>("version");
        QTest::addColumn<bool>("passes19");
        QTest::newRow("1.8.99 is below 1.9") << VersionInfo(1, 8, 99) << false;
        QTest::newRow("1.9 with patch -1 passes") << VersionInfo(1, 9, -1) << true;
        QTest::newRow("1.9 with patch -2 does not") << VersionInfo(1, 9, -2) << false;
        QTest::newRow("1.10.0 passes") << VersionInfo(1, 10, 0) << true;
        QTest::newRow("0.99.99 does not") << VersionInfo(0, 99, 99) << false;
    }

    void gate()
    {
        QFETCH(VersionInfo, version);
        QFETCH(bool, passes19);
        const VersionInfo gate(1, 9, -1);
        const bool same = version.patch() == -1;
        QCOMPARE(version >= gate, passes19);
        QCOMPARE(version < gate, !passes19);
        QCOMPARE(version > gate, passes19 && !same);
        QCOMPARE(version <= gate, !passes19 || same);
        QCOMPARE(version == gate, same);
        QCOMPARE(version != gate, !same);
        QCOMPARE(BackendVersions(VersionInfo(), version, VersionInfo(), QStringLiteral("QUARVO")).protocolAtLeast(1, 9), passes19);
    }

    void fromString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result"); // empty: refused
        QTest::newRow("three parts") << "1.27.0" << "1.27.0";
        QTest::newRow("two parts") << "1.14" << "1.14.0";
        QTest::newRow("leading v") << "v1.13.0" << "1.13.0";
        QTest::newRow("one part") << "7" << "";
    }

    void fromString()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        VersionInfo version(9, 9, 9);
        bool parsed = result.isEmpty();
        QCOMPARE(version.fromString(text, &parsed), !result.isEmpty());
        QCOMPARE(parsed, !result.isEmpty());
        QCOMPARE(version.toString(), result.isEmpty() ? QStringLiteral("9.9.9") : result);
    }
};

QTEST_APPLESS_MAIN(tst_VersionInfo)
#include "tst_versioninfo.moc"
