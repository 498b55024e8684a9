// The module's pure parts: version texts, camera and channel words, quote removal, the checked
// arithmetic on controller values and the one flash slider for all cameras.
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "controllervalues.h"
#include <VersionInfo.h>
#include "globalflashintensitycalculator.h"

#include <QStandardItemModel>
#include <QtTest>

#include <limits>

using namespace CameraSettings;

class tst_CameraSettingsHelpers : public QObject
{
    Q_OBJECT

private slots:
    // What each computation makes of a value, as text.
    void computations_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QString& actual, const QString& expected) {
            QTest::newRow(name) << actual << expected;
        };
        // What is shown for a channel is written back as the controller's two-digit word.
        const auto channel = [](const char* value) {
            bool ok = false;
            const int number = channelFromSyncGroupValue(value, &ok);
            return channelTextFromSyncGroupValue(value) + (ok ? " = " + channelText(number) : QStringLiteral(", no number"));
        };
        const auto version = [](const char* text) {
            VersionInfo version(9, 9, 9);
            bool parsed = false;
            const bool read = version.fromString(text, &parsed);
            return (read == parsed ? QString() : QStringLiteral("disagree, ")) + (read ? "" : "refused, ") + version.toString();
        };
        const auto ints = [](double value) { return QStringLiteral("%1 %2").arg(scaledToInt(value, 100, -7)).arg(roundedToInt(value, -7)); };
        const auto share = [](int part, int whole) {
            int result = -1;
            return percentShare(part, whole, &result) ? QString::number(result) : QStringLiteral("none, %1").arg(result);
        };
        const auto number = [](const char* text) {
            double result = 0.5;
            return parseFiniteNumber(text, &result) ? QString::number(result) : QStringLiteral("none, %1").arg(result);
        };
        // The flash slider over cameras of these maxima: each camera's flash after a move to the
        // position (-1: none, the flashes given stay) and the position read back from them.
        const auto flash = [](const QVector<int>& maxima, int position, const QVector<int>& flashes = {}) {
            QStandardItemModel model(maxima.size(), CameraTable::ColumnCount);
            for (int row = 0; row < maxima.size(); ++row) {
                model.setData(model.index(row, CameraTable::MaxFlash), maxima.at(row));
                model.setData(model.index(row, CameraTable::FlashIntensity), flashes.value(row, 7));
            }
            GlobalFlashIntensityCalculator calculator;
            calculator.initValues(&model);
            calculator.setCamFlashValues(position, &model);
            QStringList cells;
            for (int row = 0; row < maxima.size(); ++row)
                cells << model.data(model.index(row, CameraTable::FlashIntensity)).toString();
            return QStringLiteral("%1 at %2").arg(cells.join(' ')).arg(calculator.getSliderPosition(&model));
        };
        const int intMax = std::numeric_limits<int>::max();
        const int intMin = std::numeric_limits<int>::min();
        row("quoted", withoutDoubleQuotes("\"Wide angle 10 mm\""), "Wide angle 10 mm");
        row("Channel 123 is not cut", syncGroupWord("Channel 123"), "ch123");
        row("blanks around the number", syncGroupWord("Channel  7 "), "ch07");
        row("list word ch010", channel("d01 ch010"), "Channel 10 = Channel 10");
        row("none", channel("none"), "Channel 1, no number");
        row("list word of 10", channelListWord(10), "ch010");
        row("camera 100 keeps all digits", cameraId(100), "c100");
        row("version of three parts", version("1.27.0"), "1.27.0");
        row("version of two parts", version("1.14"), "1.14.0");
        row("version with a leading v", version("v1.13.0"), "1.13.0");
        row("version of one part", version("7"), "refused, 9.9.9");
        // Controller doubles as int: x 100 truncated toward zero, and rounded (NaN, 1e308: tst_hostilecontroller).
        row("0.29 as the widgets always showed it", ints(0.29), "28 0");
        row("negative truncates toward zero", ints(-0.015), "-1 0");
        row("halves round up", ints(2.5), "250 3");
        row("last int", ints(21474836.47), QStringLiteral("%1 21474836").arg(intMax));
        row("-inf", ints(-std::numeric_limits<double>::infinity()), QStringLiteral("%1 %1").arg(intMin));
        row("no flash allowed is a share of 0", share(0, 100), "0");
        row("no overflow near INT_MAX", share(intMax - 1, intMax), "99");
        row("no share of a negative part", share(-5, 100), "none, -1");
        row("number", number("0.700"), "0.7");
        for (const char* text : {"nan", "-inf", "0,7", "", "1e999"})
            row(qPrintable(QStringLiteral("no number: \"%1\"").arg(text)), number(text), "none, 0.5");
        row("flash position 200 is 200/201 of the maximum", flash({100, 255}, 200), "100 254 at 200");
        row("flash maximum 0 stays 0", flash({0, 40}, 150), "0 30 at 149");
        row("flash 50 and 129 match no position", flash({100, 255}, -1, {50, 129}), "50 129 at -1");
        row("flash of no camera", flash({}, 100), " at 0");
    }

    void computations()
    {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }
};

QTEST_GUILESS_MAIN(tst_CameraSettingsHelpers)
#include "tst_camerasettingshelpers.moc"
