#include "tests/desktop/GoldenPicture.h"

#include <QDir>
#include <algorithm>
#include <cstdlib>

namespace tolvane::desktop {

namespace {

/// Per channel, out of 255: smaller differences are invisible.
constexpr int sameColour = 40;
/// Share of the pixels that may differ by more than that.
constexpr double mayDiffer = 0.002;

int distance(QRgb one, QRgb other) {
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

struct Difference {
    double share = 0;
    /// Red where the pictures differ, pale elsewhere.
    QImage picture;
};

Difference between(const QImage& one, const QImage& other) {
    Difference found{.picture = QImage(one.size(), QImage::Format_RGB32)};
    qint64 differing = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const bool differs = distance(one.pixel(x, y), other.pixel(x, y)) > sameColour;
            differing += differs ? 1 : 0;
            found.picture.setPixel(x, y, differs ? qRgb(220, 0, 0) : qRgb(235, 235, 235));
        }
    }
    found.share = static_cast<double>(differing) / (static_cast<double>(one.width()) * one.height());
    return found;
}

QString outFolder() {
    const QString folder = QStringLiteral(TOLVANE_PICTURES);
    QDir().mkpath(folder);
    return folder + '/';
}

}  // namespace

::testing::AssertionResult looksLike(const QImage& picture, const QString& name) {
    const QString kept = QStringLiteral(TOLVANE_GOLDEN) + '/' + name + QStringLiteral(".png");
    const auto plain = picture.convertToFormat(QImage::Format_RGB32);
    if (qEnvironmentVariableIsSet("TOLVANE_KEEP_PICTURES")) {
        QDir().mkpath(QStringLiteral(TOLVANE_GOLDEN));
        return plain.save(kept) ? ::testing::AssertionSuccess()
                                : ::testing::AssertionFailure() << "cannot write " << qPrintable(kept);
    }
    const QImage golden = QImage(kept).convertToFormat(QImage::Format_RGB32);
    const QString out = outFolder() + name;
    if (golden.isNull() || golden.size() != plain.size()) {
        plain.save(out + QStringLiteral(".png"));
        return ::testing::AssertionFailure()
               << qPrintable(kept) << " is missing or of another size; the picture is " << qPrintable(out) << ".png";
    }
    const auto difference = between(plain, golden);
    if (difference.share <= mayDiffer) return ::testing::AssertionSuccess();
    plain.save(out + QStringLiteral(".png"));
    difference.picture.save(out + QStringLiteral("-difference.png"));
    return ::testing::AssertionFailure() << difference.share * 100 << " % of the pixels differ from "
                                         << qPrintable(kept) << "; see " << qPrintable(out) << "-difference.png";
}

}  // namespace tolvane::desktop
