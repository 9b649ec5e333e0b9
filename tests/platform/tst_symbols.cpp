#include "Files.h"
#include "SymbolImage.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

constexpr int unit = 4; // pixels per grid unit, where a drawing is measured
constexpr int grid = 24;

/// Every name that the program asks for.
const QStringList used =
    QString::fromLatin1(readFile(QStringLiteral(TARNWICK_FIXTURES "/symbols.txt")).trimmed()).split(u'\n');

struct Ink {
    QRect box;        // around every pixel at least half covered
    double share = 0; // of the whole square
    int strongest = 0;
};

Ink inkOf(const QImage& image) {
    Ink ink;
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.pixelColor(x, y).alpha();
            sum += alpha;
            ink.strongest = qMax(ink.strongest, alpha);
            if (alpha >= 128)
                ink.box |= QRect(x, y, 1, 1);
        }
    }
    ink.share = sum / (255. * image.width() * image.height());
    return ink;
}

} // namespace

class TestSymbols : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyNameHasADrawing() { QCOMPARE(SymbolImage::names(), used); }

    void hasTheFamilysSizeAndWeight_data() {
        QTest::addColumn<QString>("name");
        for (const QString& name : used)
            QTest::newRow(qPrintable(name)) << name;
    }
    void hasTheFamilysSizeAndWeight() {
        QFETCH(const QString, name);
        const Ink ink = inkOf(SymbolImage::render(name, grid * unit, Qt::black));
        const QRect live(unit, unit, (grid - 2) * unit, (grid - 2) * unit);
        QVERIFY2(live.contains(ink.box), "reaches into the margin of one unit");
        QVERIFY2(qMax(ink.box.width(), ink.box.height()) >= 14 * unit, "smaller than its fellows");
        const QPoint offset = ink.box.center() - live.center();
        QVERIFY2(qMax(qAbs(offset.x()), qAbs(offset.y())) <= unit, "off centre");

        const bool solid = name.endsWith(u".fill");
        QVERIFY2(ink.share >= (solid ? 0.25 : 0.06), qPrintable(u"too light: %1"_s.arg(ink.share)));
        QVERIFY2(ink.share <= (solid ? 0.60 : 0.36), qPrintable(u"too heavy: %1"_s.arg(ink.share)));
        for (const int pixels : {12, 14, 16, 22})
            QVERIFY2(inkOf(SymbolImage::render(name, pixels, Qt::black)).strongest >= 150, "faint");
    }

    /// Tinting keeps only the coverage, so a second colour in a drawing would be lost silently.
    void isDrawnWithOnePen() {
        const QRegularExpression otherPen(uR"re((fill|stroke)\s*=(?!"none"|"#000")|stroke-width\s*=(?!"1\.75"))re"
                                          uR"re(|viewBox\s*=(?!"0 0 24 24")|opacity|style)re"_s);
        for (const QString& name : used) {
            const QByteArray drawing = readFile(u":/symbols/%1.svg"_s.arg(name));
            QVERIFY2(drawing.contains(" viewBox="), qPrintable(name));
            QCOMPARE(name + otherPen.match(QString::fromUtf8(drawing)).captured(), name);
        }
    }

    void tintKeepsColourAndOpacity() {
        const QImage image = SymbolImage::render(u"heart.fill"_s, 48, QColor(217, 45, 32, 128));
        const QColor middle = image.pixelColor(24, 24);
        QCOMPARE(middle.alpha(), 128);
        QVERIFY(qAbs(middle.red() - 217) <= 2 && qAbs(middle.green() - 45) <= 2 && qAbs(middle.blue() - 32) <= 2);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }

    void unknownNameIsTransparent() {
        for (const QString& name : {u"no.such.symbol"_s, QString()}) {
            const QImage image = SymbolImage::render(name, 22, Qt::black);
            QCOMPARE(image.size(), QSize(22, 22));
            QCOMPARE(inkOf(image).strongest, 0);
        }
    }

    void applicationIconKeepsItsColours() {
        for (const int pixels : {16, 48, 256}) {
            const QImage icon = SymbolImage::applicationIcon(pixels);
            QCOMPARE(icon.size(), QSize(pixels, pixels));
            QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
            const QColor ground = icon.pixelColor(pixels / 2, pixels / 8);
            QVERIFY2(ground.alpha() == 255 && ground.blue() > 2 * ground.red(), qPrintable(ground.name()));
            const QColor waveform = icon.pixelColor(pixels / 2, pixels / 2);
            QVERIFY2(waveform.red() > 150, qPrintable(waveform.name()));
        }
    }

    /// Each picture in the file for macOS: its type, its size, and where its shape begins in 64ths of it.
    void applicationIconOfMacos() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"AppIcon.icns"_s);
        QCOMPARE(QProcess::execute(QStringLiteral(APPLICATION_ICON), {path}), 0);
        const QByteArray icon = readFile(path);
        const auto length = [&icon](qsizetype at) {
            return qFromBigEndian<qint32>(icon.constData() + at + 4);
        };
        QVERIFY(icon.startsWith("icns"));
        QCOMPARE(length(0), icon.size());
        QString found;
        for (qsizetype at = 8; at < icon.size(); at += length(at)) {
            const QImage image = QImage::fromData(icon.mid(at + 8, length(at) - 8), "png");
            found += u"%1 %2 %3\n"_s.arg(QString::fromLatin1(icon.mid(at, 4)))
                         .arg(image.width())
                         .arg(inkOf(image).box.left() * 64 / image.width());
        }
        QCOMPARE(found, u"ic11 32 6\nic12 64 6\nic07 128 6\nic13 256 6\n"
                        "ic08 256 6\nic14 512 6\nic09 512 6\nic10 1024 6\n"_s);
        QCOMPARE(QProcess::execute(QStringLiteral(APPLICATION_ICON), {folder.filePath(u"no/such.icns"_s)}), 1);
    }
};

QTEST_GUILESS_MAIN(TestSymbols)
#include "tst_symbols.moc"
