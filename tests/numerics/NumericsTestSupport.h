#pragma once
// Helpers shared by the numerics tests: vectors from arrays, point sets for the fits,
// exception messages, the NIST StRD linear least-squares files (tests/data/nist-lls) and
// the log relative error.

#include "vx/core/VxVector.h"
#include "vx/numerics/VxInterpol.h"
#include "vx/platform/VxExceptions.h"

#include <QFile>
#include <QString>
#include <QTextStream>

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vxtest {

inline std::unique_ptr<vx::TVxRealVector> MakeVector(const std::vector<double>& values)
{
    auto v = std::make_unique<vx::TVxRealVector>();
    for (double d : values)
        v->Add(d);
    return v;
}

// x, y and optional weights as vectors; Fit runs a piecewise polynomial's recalculation.
struct Points {
    std::unique_ptr<vx::TVxRealVector> X, Y, W;
    Points(const std::vector<double>& x, const std::vector<double>& y, const std::vector<double>& w = {})
        : X(MakeVector(x)), Y(MakeVector(y)), W(w.empty() ? nullptr : MakeVector(w)) {}
    void Fit(vx::TVxIntPolynom& p, double start = -1e300, double stop = 1e300) const
    {
        p.RecalculateCoeffs(start, stop, *X, *Y, W.get());
    }
};

// The message of the library exception f raises; "(none)" when it returns.
inline QString MessageOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const vx::Exception& e) {
        return e.Message();
    }
    return QStringLiteral("(none)");
}

inline const QString kNotEnoughData = QStringLiteral("Not enough data!");

// One NIST StRD "lls" file: '# key: value' header lines with the certified values
// (B0, B0_sd, ..., residual_sd, r_squared), then rows "y x".
struct NistLls {
    std::vector<double> X, Y;
    std::map<std::string, double> Certified;
    int Degree = 0;
    double Get(const std::string& key) const { return Certified.count(key) ? Certified.at(key) : NAN; }
};

inline NistLls LoadNistLls(const QString& name)
{
    NistLls data;
    QFile file(QStringLiteral(VX_TEST_DATA_DIR "/nist-lls/") + name + QStringLiteral(".txt"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return data;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        const int colon = line.indexOf(QLatin1Char(':'));
        if (line.startsWith(QLatin1Char('#'))) {
            bool ok = false;
            const double value = line.mid(colon + 1).toDouble(&ok);
            if (ok && colon > 0)
                data.Certified[line.mid(1, colon - 1).trimmed().toStdString()] = value;
        } else if (const QStringList cols = line.split(QLatin1Char(' '), Qt::SkipEmptyParts); cols.size() >= 2) {
            data.Y.push_back(cols[0].toDouble());
            data.X.push_back(cols[1].toDouble());
        }
    }
    data.Degree = int(data.Get("polynomial_degree"));
    return data;
}

// Number of correct significant digits, -log10(|value - certified| / |certified|),
// capped at 15 (the certified values carry 15 digits).
inline double LogRelativeError(double value, double certified)
{
    if (value == certified)
        return 15.0;
    const double rel = certified == 0.0 ? std::fabs(value) : std::fabs(value - certified) / std::fabs(certified);
    return rel > 0.0 ? std::min(15.0, -std::log10(rel)) : 0.0;
}

} // namespace vxtest
