// The small shared pieces: version gates, camera and channel words, quote removal,
// operator reports, the checked arithmetic on controller values, and the camera
// table's header texts.
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "controllerfixture.h"
#include "controllervalues.h"

#include <QtTest>

#include <functional>
#include <limits>

using namespace CameraSettings;

class tst_CameraSettingsHelpers : public QObject
{
    Q_OBJECT

private slots:
    void versionGates_data();
    void versionGates();
    void texts_data();
    void texts();
    void reportsGoToTheHost();
    void controllerDoublesToInt_data();
    void controllerDoublesToInt();
    void sharesCountsAndNumbers();
};

void tst_CameraSettingsHelpers::versionGates_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("gateMinor");
    QTest::addColumn<bool>("passes");
    QTest::addColumn<bool>("briskbox");

    QTest::newRow("1.8.99 below 1.9") << VersionInfo(1, 8, 99) << "QUARVO" << 9 << false << false;
    QTest::newRow("1.9.-1 at 1.9") << VersionInfo(1, 9, -1) << "BRISKBOX" << 9 << true << true;
    QTest::newRow("2.0.0 above 1.27") << VersionInfo(2, 0, 0) << "briskbox" << 27 << true << false;
    QTest::newRow("1.26.9 below 1.27") << VersionInfo(1, 26, 9) << "BRISKBOX " << 27 << false << false;
    QTest::newRow("1.27.0 at 1.27") << VersionInfo(1, 27, 0) << "" << 27 << true << false;
}

void tst_CameraSettingsHelpers::versionGates()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QString, model);
    QFETCH(int, gateMinor);
    QFETCH(bool, passes);
    QFETCH(bool, briskbox);

    const BackendVersions versions(VersionInfo(), protocol, VersionInfo(), model);
    QCOMPARE(protocolAtLeast(&versions, 1, gateMinor), passes);
    QCOMPARE(isBriskbox(&versions), briskbox);
    // Without versions nothing passes and the dialog shows the camera table.
    QVERIFY(!protocolAtLeast(nullptr, 0, 0) && !isBriskbox(nullptr));
}

void tst_CameraSettingsHelpers::texts_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("quoted") << "withoutDoubleQuotes" << "\"Wide angle 10 mm\"" << "Wide angle 10 mm";
    QTest::newRow("quotes inside") << "withoutDoubleQuotes" << "a\"b\"\"c" << "abc";
    QTest::newRow("single quotes stay") << "withoutDoubleQuotes" << "'x'" << "'x'";
    QTest::newRow("Channel 3") << "syncGroupWord" << "Channel 3" << "ch03";
    QTest::newRow("Channel 123 is not cut") << "syncGroupWord" << "Channel 123" << "ch123";
    QTest::newRow("blanks around the number") << "syncGroupWord" << "Channel  7 " << "ch07";
    QTest::newRow("no number") << "syncGroupWord" << "Channel" << "ch00";
    QTest::newRow("d01 ch10") << "channelTextFromSyncGroupValue" << "d01 ch10" << "Channel 10";
    QTest::newRow("list word ch010") << "channelTextFromSyncGroupValue" << "d01 ch010" << "Channel 10";
    QTest::newRow("trailing blank") << "channelTextFromSyncGroupValue" << "d01 ch02 " << "Channel 2";
    QTest::newRow("none") << "channelTextFromSyncGroupValue" << "none" << "Channel 1";
    QTest::newRow("no channel number") << "channelTextFromSyncGroupValue" << "d01 chx" << "Channel 1";
    QTest::newRow("list word of 3") << "channelListWord" << "3" << "ch03";
    QTest::newRow("list word of 10") << "channelListWord" << "10" << "ch010";
    QTest::newRow("camera 9") << "cameraId" << "9" << "c09";
    QTest::newRow("camera 100 keeps all digits") << "cameraId" << "100" << "c100";
}

void tst_CameraSettingsHelpers::texts()
{
    QFETCH(QString, function);
    QFETCH(QString, text);
    QFETCH(QString, result);

    const QMap<QString, std::function<QString(const QString&)>> functions{
        {"withoutDoubleQuotes", withoutDoubleQuotes}, {"syncGroupWord", syncGroupWord},
        {"channelTextFromSyncGroupValue", channelTextFromSyncGroupValue},
        {"channelListWord", [](const QString& t) { return channelListWord(t.toInt()); }},
        {"cameraId", [](const QString& t) { return cameraId(t.toInt()); }}};
    QCOMPARE(functions.value(function)(text), result);
    // What is shown for a channel is written back as the controller's two-digit word.
    bool ok = false;
    const int channel = channelFromSyncGroupValue(text, &ok);
    if (function == "channelTextFromSyncGroupValue")
        QCOMPARE(ok ? channelText(channel) : QStringLiteral("no number"), result == "Channel 1" ? "no number" : result);
}

void tst_CameraSettingsHelpers::reportsGoToTheHost()
{
    ControllerFixture fixture;
    reportError(fixture.channel(), QStringLiteral("Error: Unable to set camera mode"));
    announceConfigurationChanged(fixture.channel());
    reportError(nullptr, QStringLiteral("Error: nobody hears this"));
    announceConfigurationChanged(nullptr);
    QCOMPARE(fixture.messages(), (QStringList{operatorError("Error: Unable to set camera mode"), ConfigurationEvent}));
    QCOMPARE(CameraTable::headerText(CameraTable::RingDisplayIntensity), QStringLiteral("Ring display intensity"));
    QVERIFY(!CameraTable::headerSource(CameraTable::MarkerSizeLimitAbsolute) && !CameraTable::headerSource(40));
}

void tst_CameraSettingsHelpers::controllerDoublesToInt_data()
{
    const int intMax = std::numeric_limits<int>::max();
    const int intMin = std::numeric_limits<int>::min();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("truncatedTimes100");
    QTest::addColumn<int>("rounded");

    QTest::newRow("0.29 as the widgets always showed it") << 0.29 << 28 << 0;
    QTest::newRow("negative truncates toward zero") << -0.015 << -1 << 0;
    QTest::newRow("halves round up") << 2.5 << 250 << 3;
    QTest::newRow("negative halves round up") << -2.5 << -250 << -2;
    QTest::newRow("last int") << 21474836.47 << intMax << 21474836;
    QTest::newRow("1e308") << 1e308 << intMax << intMax;
    QTest::newRow("-inf") << -inf << intMin << intMin;
    QTest::newRow("NaN gives the fallback") << std::numeric_limits<double>::quiet_NaN() << -7 << -7;
}

void tst_CameraSettingsHelpers::controllerDoublesToInt()
{
    QFETCH(double, value);
    QFETCH(int, truncatedTimes100);
    QFETCH(int, rounded);
    QCOMPARE(scaledToInt(value, 100, -7), truncatedTimes100);
    QCOMPARE(roundedToInt(value, -7), rounded);
}

void tst_CameraSettingsHelpers::sharesCountsAndNumbers()
{
    const int intMax = std::numeric_limits<int>::max();
    int share = -1;
    QVERIFY(percentShare(60, 100, &share) && share == 60);
    QVERIFY2(percentShare(0, 100, &share) && share == 0, "no flash allowed is a share of 0");
    QVERIFY2(percentShare(intMax - 1, intMax, &share) && share == 99, "no overflow near INT_MAX");
    share = -1;
    QVERIFY2(!percentShare(-5, 0, &share) && !percentShare(-5, 100, &share) && !percentShare(5, -100, &share),
             "a negative part or whole has no share");
    QCOMPARE(share, -1);
    QCOMPARE(boundedCount(12, MaxSyncChannels), 12);
    QCOMPARE(boundedCount(intMax, MaxCameras), 999);
    QCOMPARE(boundedCount(std::numeric_limits<int>::min(), 99), 0);
    double number = 0.5;
    QVERIFY(parseFiniteNumber("0.700", &number) && number == 0.7);
    for (const char* text : {"nan", "-inf", "0,7", "", "1e999"})
        QVERIFY2(!parseFiniteNumber(text, &number) && number == 0.7, text);
}

QTEST_GUILESS_MAIN(tst_CameraSettingsHelpers)
#include "tst_camerasettingshelpers.moc"
