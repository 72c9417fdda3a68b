// Accuracy of the linear and polynomial least-squares fits against the certified values
// of the NIST Statistical Reference Datasets (linear least squares, public domain,
// https://www.itl.nist.gov/div898/strd/lls/), in correct significant digits. The fits
// use the normal equations with a Cholesky solve, which squares the condition number:
// Wampler1-5 (x = 0..20 in powers up to x^10) keep about six digits of the parameters,
// and Filip (degree 10) is beyond double precision.

#include "NumericsTestSupport.h"

#include "vx/numerics/VxLinRegr.h"
#include "vx/numerics/VxPolyRegr.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace vx;
using namespace vxtest;

namespace {

enum class TKind { Line, ThroughOrigin, Polynomial };

struct Digits {
    double Params = 15.0, Errors = 15.0; // worst over the parameters / their standard errors
    void Add(double& worst, double value, double certified) { worst = std::min(worst, LogRelativeError(value, certified)); }
};

Digits Measure(const NistLls& data, TKind kind)
{
    const Points p(data.X, data.Y);
    Digits d;
    if (kind == TKind::Polynomial) {
        TVxPolynomRegessionResults r;
        r.Order = data.Degree;
        PolynomRegression(CVxMinReal, CVxMaxReal, *p.X, *p.Y, r);
        for (int k = 0; k <= data.Degree; ++k) {
            d.Add(d.Params, r.Coeffs[k], data.Get("B" + std::to_string(k)));
            d.Add(d.Errors, r.DeltaCoeffs[k], data.Get("B" + std::to_string(k) + "_sd"));
        }
        return d;
    }
    TVxLinearRegessionResults r; // Offset 0 is the fixed offset of the fit through the origin
    if (kind == TKind::Line) {
        LinReg(CVxMinReal, CVxMaxReal, *p.X, *p.Y, r);
        d.Add(d.Params, r.Offset, data.Get("B0"));
        d.Add(d.Errors, r.DeltaOffset, data.Get("B0_sd"));
        d.Add(d.Params, r.R2, data.Get("r_squared"));
        d.Add(d.Errors, std::sqrt(r.ChiSquare / double(data.X.size() - 2)), data.Get("residual_sd"));
    } else {
        OfsReg(CVxMinReal, CVxMaxReal, *p.X, *p.Y, r);
    }
    d.Add(d.Params, r.Slope, data.Get("B1"));
    d.Add(d.Errors, r.DeltaSlope, data.Get("B1_sd"));
    return d;
}

} // namespace

TEST(NistAccuracy, CertifiedDigits)
{
    const struct Row {
        const char* Name;
        TKind Kind;
        double MinParams, MinErrors; // measured values are printed
    } rows[] = {
        { "Norris", TKind::Line, 12, 12 }, { "NoInt1", TKind::ThroughOrigin, 13, 13 },
        { "NoInt2", TKind::ThroughOrigin, 13, 13 }, { "Norris", TKind::Polynomial, 12, 12 },
        { "Pontius", TKind::Polynomial, 11, 10 },
        { "Wampler1", TKind::Polynomial, 6, 6 }, // exact fits: certified errors 0, digits absolute
        { "Wampler2", TKind::Polynomial, 9, 10 }, { "Wampler3", TKind::Polynomial, 6, 10 },
        { "Wampler4", TKind::Polynomial, 6, 10 }, { "Wampler5", TKind::Polynomial, 6, 10 },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Name);
        const NistLls data = LoadNistLls(QString::fromLatin1(row.Name));
        ASSERT_FALSE(data.X.empty());
        const Digits d = Measure(data, row.Kind);
        std::printf("%-8s %-10s parameters %5.1f digits, standard errors %5.1f digits\n", row.Name,
            row.Kind == TKind::Polynomial ? "polynomial" : row.Kind == TKind::Line ? "LinReg" : "OfsReg", d.Params, d.Errors);
        EXPECT_GE(d.Params, row.MinParams);
        EXPECT_GE(d.Errors, row.MinErrors);
    }
}

TEST(NistAccuracy, FilipIsBeyondTheNormalEquations)
{
    // Degree 10 on x in [-9, -3]: the normal matrix's condition number is far beyond
    // 1/eps, so the factorisation refuses it or returns a fit without correct digits.
    const NistLls data = LoadNistLls(QStringLiteral("Filip"));
    ASSERT_EQ(data.X.size(), 82u);
    const QString message = MessageOf([&] {
        const Digits d = Measure(data, TKind::Polynomial);
        std::printf("Filip    polynomial parameters %5.1f digits, standard errors %5.1f digits\n", d.Params, d.Errors);
    });
    EXPECT_TRUE(message == QStringLiteral("(none)") || message.contains(QStringLiteral("not positive definite")));
}
