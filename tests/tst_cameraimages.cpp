// The module's resource collection as the dialog and the camera pages load it: each
// picture under its path, a PNG of the label's or icon's size, a drawn shape on a
// transparent background, and one recognisably different picture per camera model.

#include <QImage>
#include <QImageReader>
#include <QtTest>

namespace {

const QStringList kCameraPictures = {
    "lumacam1", "lumacam2", "lumacam3", "lumacam_kp_s0", "lumacam_kp_s1", "lumacam_kpc",
    "lumacam_kpe", "lumacam_vx1", "lumacam5", "lumacam5_c", "briskbox3_left", "briskbox3_right",
    "lumacam6m", "briskbox3m_left", "briskbox3m_right", "LC9-30", "unknown"};
const QStringList kIcons = {"lock.png", "green_hook.png", "red_cross.png"};
const QSize kCameraSize(120, 90);
const QSize kIconSize(32, 32);

QString cameraPath(const QString& model)
{
    return QStringLiteral(":/images/%1_transparent.png").arg(model);
}

QImage loadArgb(const QString& path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

// Share of the area, in percent, that is (nearly) opaque.
int opaquePercent(const QImage& image, const QRect& area)
{
    int opaque = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            opaque += qAlpha(image.pixel(x, y)) > 200;
    return opaque * 100 / (area.width() * area.height());
}

} // namespace

class tst_CameraImages : public QObject
{
    Q_OBJECT

private slots:
    void picture_data();
    void picture();
    void iconColour_data();
    void iconColour();
    void camerasAreDistinct();
};

void tst_CameraImages::picture_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    for (const QString& model : kCameraPictures)
        QTest::newRow(qPrintable(model)) << cameraPath(model) << kCameraSize;
    // The camera page form names its first picture with a doubled slash.
    QTest::newRow("form default") << "://images/lumacam_kp_s0_transparent.png" << kCameraSize;
    for (const QString& icon : kIcons) {
        QTest::newRow(qPrintable(":/" + icon)) << ":/" + icon << kIconSize;
        QTest::newRow(qPrintable(":/images/" + icon)) << ":/images/" + icon << kIconSize;
    }
}

void tst_CameraImages::picture()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);

    QImageReader reader(path);
    QVERIFY2(reader.canRead(), qPrintable(path + " is missing or unreadable"));
    QCOMPARE(reader.format(), QByteArray("png"));
    const QImage read = reader.read();
    QCOMPARE(read.size(), size);
    QVERIFY2(read.hasAlphaChannel(), "a picture without alpha would paint its background");

    const QImage image = read.convertToFormat(QImage::Format_ARGB32);
    const QRect all = image.rect();
    for (const QPoint& corner : {all.topLeft(), all.topRight(), all.bottomLeft(), all.bottomRight()})
        QVERIFY2(qAlpha(image.pixel(corner)) == 0, "corners must be transparent");
    const QRect middle(size.width() / 4, size.height() / 4, size.width() / 2, size.height() / 2);
    const int drawn = opaquePercent(image, middle);
    QVERIFY2(drawn >= 30, qPrintable(QString("only %1% of the middle is drawn").arg(drawn)));
}

void tst_CameraImages::iconColour_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("green");
    QTest::newRow("hook") << ":/green_hook.png" << true;
    QTest::newRow("cross") << ":/red_cross.png" << false;
}

void tst_CameraImages::iconColour()
{
    QFETCH(QString, path);
    QFETCH(bool, green);

    const QImage image = loadArgb(path);
    qint64 red = 0;
    qint64 greenSum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb px = image.pixel(x, y);
            red += qRed(px) * qAlpha(px);
            greenSum += qGreen(px) * qAlpha(px);
        }
    QVERIFY2(green ? greenSum > 2 * red : red > 2 * greenSum,
             qPrintable(QString("red %1, green %2").arg(red).arg(greenSum)));
}

void tst_CameraImages::camerasAreDistinct()
{
    QVector<QImage> images;
    for (const QString& model : kCameraPictures)
        images.append(loadArgb(cameraPath(model)));

    // A model must be told apart at a glance, so a few stray pixels are not enough.
    const int minimumDifference = kCameraSize.width() * kCameraSize.height() / 20;
    for (int a = 0; a < images.size(); ++a)
        for (int b = a + 1; b < images.size(); ++b) {
            int differing = 0;
            for (int y = 0; y < kCameraSize.height(); ++y)
                for (int x = 0; x < kCameraSize.width(); ++x)
                    differing += images[a].pixel(x, y) != images[b].pixel(x, y);
            QVERIFY2(differing >= minimumDifference,
                     qPrintable(QString("%1 and %2 differ in only %3 pixels")
                                    .arg(kCameraPictures[a], kCameraPictures[b]).arg(differing)));
        }
}

QTEST_GUILESS_MAIN(tst_CameraImages)
#include "tst_cameraimages.moc"
