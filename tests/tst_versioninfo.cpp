// Version parsing and the protocol gates the module switches its features by.
#include "BackendVersions.h"
#include "VersionInfo.h"

#include <QtTest>

class tst_VersionInfo : public QObject
{
    Q_OBJECT

private slots:
    void gate_data();
    void gate();
    void ordering();
    void fromString_data();
    void fromString();
    void backendVersionsKeepsWhatTheHostGave();
};

void tst_VersionInfo::gate_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("patch");
    QTest::addColumn<bool>("passes19");

    QTest::newRow("1.8.99 is below 1.9") << 1 << 8 << 99 << false;
    QTest::newRow("1.9.0 passes") << 1 << 9 << 0 << true;
    QTest::newRow("1.9 with patch -1 passes") << 1 << 9 << -1 << true;
    QTest::newRow("1.9 with patch -2 does not") << 1 << 9 << -2 << false;
    QTest::newRow("1.10.0 passes") << 1 << 10 << 0 << true;
    QTest::newRow("2.0.0 passes") << 2 << 0 << 0 << true;
    QTest::newRow("0.99.99 does not") << 0 << 99 << 99 << false;
}

void tst_VersionInfo::gate()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(int, patch);
    QFETCH(bool, passes19);

    const VersionInfo version(major, minor, patch);
    QCOMPARE(version >= VersionInfo(1, 9, -1), passes19);
    QCOMPARE(version < VersionInfo(1, 9, -1), !passes19);
    const BackendVersions backend(VersionInfo(), version, VersionInfo(), QStringLiteral("QUARVO"));
    QCOMPARE(backend.protocolAtLeast(1, 9), passes19);
}

void tst_VersionInfo::ordering()
{
    const VersionInfo a(1, 27, 0);
    const VersionInfo b(1, 27, 1);
    QVERIFY(a < b && a <= b && b > a && b >= a && a != b);
    QVERIFY(!(a == b) && !(a > b) && !(b < a));
    QVERIFY(a == VersionInfo(1, 27, 0) && a <= VersionInfo(1, 27, 0) && a >= VersionInfo(1, 27, 0));
    // the minor decides before the patch, the major before both
    QVERIFY(VersionInfo(1, 3, 50) < VersionInfo(1, 4, 0));
    QVERIFY(VersionInfo(1, 99, 99) < VersionInfo(2, 0, 0));
}

void tst_VersionInfo::fromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("result");

    QTest::newRow("three parts") << "1.27.0" << true << "1.27.0";
    QTest::newRow("two parts") << "1.14" << true << "1.14.0";
    QTest::newRow("leading v") << "v1.13.0" << true << "1.13.0";
    QTest::newRow("blanks around") << " 2.0.1 " << true << "2.0.1";
    QTest::newRow("one part") << "7" << false << "9.9.9";
    QTest::newRow("four parts") << "1.2.3.4" << false << "9.9.9";
    QTest::newRow("letters") << "1.x.0" << false << "9.9.9";
    QTest::newRow("empty") << "" << false << "9.9.9";
}

void tst_VersionInfo::fromString()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(QString, result);

    VersionInfo version(9, 9, 9);
    bool parsed = !ok;
    QCOMPARE(version.fromString(text, &parsed), ok);
    QCOMPARE(parsed, ok);
    QCOMPARE(version.toString(), result);
}

void tst_VersionInfo::backendVersionsKeepsWhatTheHostGave()
{
    const BackendVersions backend(VersionInfo(3, 1, 0), VersionInfo(1, 27, 2), VersionInfo(3, 1, 4),
                                  QStringLiteral("BRISKBOX"));
    QCOMPARE(backend.systemPt().toString(), QStringLiteral("3.1.0"));
    QCOMPARE(backend.protocol().toString(), QStringLiteral("1.27.2"));
    QCOMPARE(backend.systemCt().toString(), QStringLiteral("3.1.4"));
    QCOMPARE(backend.atcModel(), QStringLiteral("BRISKBOX"));
}

QTEST_APPLESS_MAIN(tst_VersionInfo)
#include "tst_versioninfo.moc"
