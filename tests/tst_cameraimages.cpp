// The module's resource collection as the dialog and the camera pages load it: each
// picture under its path, a PNG of the label's or icon's size, a drawn shape on a
// transparent background, the icons in their colours, and one recognisably different
// picture per camera model.
#include <QImage>
#include <QImageReader>
#include <QtTest>

namespace {

const QStringList CameraPictures = {
    "lumacam1", "lumacam2", "lumacam3", "lumacam_kp_s0", "lumacam_kp_s1", "lumacam_kpc",
    "lumacam_kpe", "lumacam_vx1", "lumacam5", "lumacam5_c", "briskbox3_left", "briskbox3_right",
    "lumacam6m", "briskbox3m_left", "briskbox3m_right", "LC9-30", "unknown"};

QImage cameraPicture(const QString& model)
{
    return QImage(QStringLiteral(":/images/%1_transparent.png").arg(model)).convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class tst_CameraImages : public QObject
{
    Q_OBJECT

private slots:
    void picture_data();
    void picture();
    void camerasAreDistinct();
};

void tst_CameraImages::picture_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("colour"); // of an icon: the channel that dominates
    for (const QString& model : CameraPictures)
        QTest::newRow(qPrintable(model)) << QStringLiteral(":/images/%1_transparent.png").arg(model) << QSize(120, 90) << "";
    // The camera page form names its first picture with a doubled slash.
    QTest::newRow("form default") << "://images/lumacam_kp_s0_transparent.png" << QSize(120, 90) << "";
    for (const QString prefix : {":/", ":/images/"}) {
        QTest::newRow(qPrintable(prefix + "lock")) << prefix + "lock.png" << QSize(32, 32) << "";
        QTest::newRow(qPrintable(prefix + "hook")) << prefix + "green_hook.png" << QSize(32, 32) << "green";
        QTest::newRow(qPrintable(prefix + "cross")) << prefix + "red_cross.png" << QSize(32, 32) << "red";
    }
}

void tst_CameraImages::picture()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(QString, colour);

    QImageReader reader(path);
    QCOMPARE(reader.format(), QByteArray("png"));
    const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(image.size(), size);
    const QRect all = image.rect();
    for (const QPoint& corner : {all.topLeft(), all.topRight(), all.bottomLeft(), all.bottomRight()})
        QVERIFY2(qAlpha(image.pixel(corner)) == 0, "corners must be transparent");
    int opaque = 0;
    qint64 red = 0;
    qint64 green = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QRgb px = image.pixel(x, y);
            opaque += qAlpha(px) > 200 && qAbs(x - size.width() / 2) < size.width() / 4
                && qAbs(y - size.height() / 2) < size.height() / 4;
            red += qRed(px) * qAlpha(px);
            green += qGreen(px) * qAlpha(px);
        }
    }
    QVERIFY2(opaque * 4 >= size.width() * size.height() * 30 / 100, "the middle is drawn");
    if (!colour.isEmpty())
        QVERIFY2(colour == "green" ? green > 2 * red : red > 2 * green, qPrintable(QString("red %1, green %2").arg(red).arg(green)));
}

void tst_CameraImages::camerasAreDistinct()
{
    // A model must be told apart at a glance, so a few stray pixels are not enough.
    for (int a = 0; a < CameraPictures.size(); ++a) {
        const QImage first = cameraPicture(CameraPictures.at(a));
        for (int b = a + 1; b < CameraPictures.size(); ++b) {
            const QImage second = cameraPicture(CameraPictures.at(b));
            int differing = 0;
            for (int y = 0; y < first.height(); ++y)
                for (int x = 0; x < first.width(); ++x)
                    differing += first.pixel(x, y) != second.pixel(x, y);
            QVERIFY2(differing >= first.width() * first.height() / 20,
                     qPrintable(CameraPictures.at(a) + " and " + CameraPictures.at(b) + " look alike"));
        }
    }
}

QTEST_GUILESS_MAIN(tst_CameraImages)
#include "tst_cameraimages.moc"
