// The small shared pieces: version gates, camera and channel words, quote removal,
// operator reports, the checked arithmetic on controller values, and the camera
// table's column names and header texts.
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "controllerfixture.h"
#include "controllervalues.h"

#include <QtTest>

#include <limits>

class tst_CameraSettingsHelpers : public QObject
{
    Q_OBJECT

private slots:
    void protocolGate_data();
    void protocolGate();
    void briskboxIsTheExactModelWord_data();
    void briskboxIsTheExactModelWord();
    void cameraId();
    void withoutDoubleQuotes_data();
    void withoutDoubleQuotes();
    void reportsGoToTheHost();
    void syncGroupWord_data();
    void syncGroupWord();
    void channelFromSyncGroupValue_data();
    void channelFromSyncGroupValue();
    void channelListWord();
    void headerTexts();
    void controllerDoublesToInt_data();
    void controllerDoublesToInt();
    void percentShareAndCounts();
};

void tst_CameraSettingsHelpers::protocolGate_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("patch");
    QTest::addColumn<int>("gateMinor");
    QTest::addColumn<bool>("passes");

    QTest::newRow("1.8.99 below 1.9") << 1 << 8 << 99 << 9 << false;
    QTest::newRow("1.9.0 at 1.9") << 1 << 9 << 0 << 9 << true;
    QTest::newRow("1.9.-1 at 1.9") << 1 << 9 << -1 << 9 << true;
    QTest::newRow("2.0.0 above 1.27") << 2 << 0 << 0 << 27 << true;
    QTest::newRow("1.26.9 below 1.27") << 1 << 26 << 9 << 27 << false;
    QTest::newRow("1.27.0 at 1.27") << 1 << 27 << 0 << 27 << true;
}

void tst_CameraSettingsHelpers::protocolGate()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(int, patch);
    QFETCH(int, gateMinor);
    QFETCH(bool, passes);

    const BackendVersions versions(VersionInfo(), VersionInfo(major, minor, patch), VersionInfo(), "QUARVO");
    QCOMPARE(CameraSettings::protocolAtLeast(&versions, 1, gateMinor), passes);
    QVERIFY2(!CameraSettings::protocolAtLeast(nullptr, 1, gateMinor), "no versions pass no gate");
    QVERIFY(!CameraSettings::protocolAtLeast(nullptr, 0, 0));
}

void tst_CameraSettingsHelpers::briskboxIsTheExactModelWord_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool>("briskbox");

    QTest::newRow("BRISKBOX") << "BRISKBOX" << true;
    QTest::newRow("lower case") << "briskbox" << false;
    QTest::newRow("trailing blank") << "BRISKBOX " << false;
    QTest::newRow("ordinary system") << "QUARVO" << false;
    QTest::newRow("empty") << "" << false;
}

void tst_CameraSettingsHelpers::briskboxIsTheExactModelWord()
{
    QFETCH(QString, model);
    QFETCH(bool, briskbox);

    const BackendVersions versions(VersionInfo(), VersionInfo(1, 27, 0), VersionInfo(), model);
    QCOMPARE(CameraSettings::isBriskbox(&versions), briskbox);
    QVERIFY(!CameraSettings::isBriskbox(nullptr));
}

void tst_CameraSettingsHelpers::cameraId()
{
    // The same word the controller commands carry through "c%02d".
    for (int number : {1, 9, 12, 100})
        QCOMPARE(CameraSettings::cameraId(number), QString::asprintf("c%02d", number));
}

void tst_CameraSettingsHelpers::withoutDoubleQuotes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::newRow("quoted") << "\"Wide angle 10 mm\"" << "Wide angle 10 mm";
    QTest::newRow("quotes inside") << "a\"b\"\"c" << "abc";
    QTest::newRow("plain") << "LUMACAM5" << "LUMACAM5";
    QTest::newRow("only quotes") << "\"\"" << "";
    QTest::newRow("single quotes stay") << "'x'" << "'x'";
}

void tst_CameraSettingsHelpers::withoutDoubleQuotes()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(CameraSettings::withoutDoubleQuotes(text), shown);
}

void tst_CameraSettingsHelpers::reportsGoToTheHost()
{
    ControllerFixture fixture;
    CameraSettings::reportError(fixture.channel(), QStringLiteral("Error: Unable to set camera mode"));
    CameraSettings::announceConfigurationChanged(fixture.channel());
    CameraSettings::reportError(nullptr, QStringLiteral("Error: nobody hears this"));
    CameraSettings::announceConfigurationChanged(nullptr);
    QCOMPARE(fixture.messages(), (QStringList{operatorError("Error: Unable to set camera mode"), ConfigurationEvent}));
}

void tst_CameraSettingsHelpers::syncGroupWord_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("word");

    QTest::newRow("Channel 3") << "Channel 3" << "ch03";
    QTest::newRow("Channel 12") << "Channel 12" << "ch12";
    QTest::newRow("Channel 123 is not cut") << "Channel 123" << "ch123";
    QTest::newRow("blanks around the number") << "Channel  7 " << "ch07";
    QTest::newRow("no number") << "Channel" << "ch00";
}

void tst_CameraSettingsHelpers::syncGroupWord()
{
    QFETCH(QString, shown);
    QFETCH(QString, word);
    QCOMPARE(CameraSettings::syncGroupWord(shown), word);
}

void tst_CameraSettingsHelpers::channelFromSyncGroupValue_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("channel");
    QTest::addColumn<QString>("shown");

    QTest::newRow("d01 ch03") << "d01 ch03" << true << 3 << "Channel 3";
    QTest::newRow("d01 ch10") << "d01 ch10" << true << 10 << "Channel 10";
    QTest::newRow("list word ch010") << "d01 ch010" << true << 10 << "Channel 10";
    QTest::newRow("none") << "none" << false << 0 << "Channel 1";
    QTest::newRow("no number") << "d01 chx" << false << 0 << "Channel 1";
    QTest::newRow("empty") << "" << false << 0 << "Channel 1";
    QTest::newRow("trailing blank") << "d01 ch02 " << true << 2 << "Channel 2";
}

void tst_CameraSettingsHelpers::channelFromSyncGroupValue()
{
    QFETCH(QString, value);
    QFETCH(bool, ok);
    QFETCH(int, channel);
    QFETCH(QString, shown);

    bool parsed = !ok;
    QCOMPARE(CameraSettings::channelFromSyncGroupValue(value, &parsed), channel);
    QCOMPARE(parsed, ok);
    QCOMPARE(CameraSettings::channelTextFromSyncGroupValue(value), shown);
}

void tst_CameraSettingsHelpers::channelListWord()
{
    QCOMPARE(CameraSettings::channelListWord(3), QStringLiteral("ch03"));
    QCOMPARE(CameraSettings::channelListWord(10), QStringLiteral("ch010"));
    QCOMPARE(CameraSettings::channelText(2), QStringLiteral("Channel 2"));
    // What is shown for a channel is written back as the controller's two-digit word.
    QCOMPARE(CameraSettings::syncGroupWord(CameraSettings::channelText(2)), QStringLiteral("ch02"));
}

void tst_CameraSettingsHelpers::headerTexts()
{
    QCOMPARE(CameraTable::headerText(CameraTable::SensorGain), QStringLiteral("Sensor gain"));
    QCOMPARE(CameraTable::headerText(CameraTable::RingDisplayIntensity), QStringLiteral("Ring display intensity"));
    QVERIFY(!CameraTable::headerSource(CameraTable::MarkerSizeLimitAbsolute));
    QVERIFY(!CameraTable::headerSource(-1) && !CameraTable::headerSource(CameraTable::ColumnCount));
}

void tst_CameraSettingsHelpers::controllerDoublesToInt_data()
{
    const int intMax = std::numeric_limits<int>::max();
    const int intMin = std::numeric_limits<int>::min();
    const double nan = std::numeric_limits<double>::quiet_NaN();
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
    QTest::newRow("-1e308") << -1e308 << intMin << intMin;
    QTest::newRow("inf") << inf << intMax << intMax;
    QTest::newRow("-inf") << -inf << intMin << intMin;
    QTest::newRow("NaN gives the fallback") << nan << -7 << -7;
}

void tst_CameraSettingsHelpers::controllerDoublesToInt()
{
    QFETCH(double, value);
    QFETCH(int, truncatedTimes100);
    QFETCH(int, rounded);
    QCOMPARE(CameraSettings::scaledToInt(value, 100, -7), truncatedTimes100);
    QCOMPARE(CameraSettings::roundedToInt(value, -7), rounded);
}

void tst_CameraSettingsHelpers::percentShareAndCounts()
{
    const int intMax = std::numeric_limits<int>::max();
    int share = -1;
    QVERIFY(CameraSettings::percentShare(60, 100, &share));
    QCOMPARE(share, 60);
    QVERIFY2(CameraSettings::percentShare(intMax - 1, intMax, &share), "no overflow near INT_MAX");
    QCOMPARE(share, 99);
    share = -1;
    QVERIFY2(!CameraSettings::percentShare(-5, 0, &share), "a negative part of nothing has no share");
    QVERIFY(!CameraSettings::percentShare(-5, 100, &share));
    QVERIFY(!CameraSettings::percentShare(5, -100, &share));
    QCOMPARE(share, -1);

    QCOMPARE(CameraSettings::boundedCount(12, CameraSettings::MaxSyncChannels), 12);
    QCOMPARE(CameraSettings::boundedCount(intMax, CameraSettings::MaxCameras), 999);
    QCOMPARE(CameraSettings::boundedCount(std::numeric_limits<int>::min(), 99), 0);

    double number = 0.5;
    QVERIFY(CameraSettings::parseFiniteNumber("0.700", &number));
    QCOMPARE(number, 0.7);
    for (const char* text : {"nan", "-inf", "0,7", "", "1e999"})
        QVERIFY2(!CameraSettings::parseFiniteNumber(text, &number) && number == 0.7, text);
}

QTEST_GUILESS_MAIN(tst_CameraSettingsHelpers)
#include "tst_camerasettingshelpers.moc"
