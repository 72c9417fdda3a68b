#pragma once
// A field of arrows: one arrow per data point, from (x[i], y[i]) to (x[i] + dx[i],
// y[i] + dy[i]).
//
// The tip is offset linearly in data units from the start pixel, also on logarithmic axes
// (dx divided by the axis's value-per-pixel factor), in the direction in which the axis's
// values grow, so that on a twisted axis the arrow still points to its end. While the line
// style is visible the ranges include both ends of every arrow; hidden arrows contribute
// only their starts, and showing or hiding them rescans the ranges. A missing, short or
// non-finite component counts as 0 (the tip lies on the point); a point whose x or y is
// not finite gets no arrow.

#include "vx/series/VxDataSeries.h"

namespace vx {

class TVxArrowSeries : public TVxNotCalculatedSeries {
    Q_OBJECT
    Q_PROPERTY(int TipLength READ TipLength WRITE SetTipLength)
    Q_PROPERTY(int TipWidth READ TipWidth WRITE SetTipWidth)
    Q_PROPERTY(vx::TVxAxis* XAxis READ XAxis WRITE SetXAxis)
    Q_PROPERTY(vx::TVxAxis* YAxis READ YAxis WRITE SetYAxis)
    Q_PROPERTY(vx::TVxCustomRealVector* XData READ XData WRITE SetXData)
    Q_PROPERTY(vx::TVxCustomRealVector* YData READ YData WRITE SetYData)
    Q_PROPERTY(vx::TVxCustomRealVector* Weight READ Weight WRITE SetWeight)
    Q_PROPERTY(vx::TVxCustomRealVector* dXData READ dXData WRITE SetDX)
    Q_PROPERTY(vx::TVxCustomRealVector* dYData READ dYData WRITE SetDY)

public:
    // Binds to the last graph among the owner's children; TipLength 10, TipWidth 3.
    explicit TVxArrowSeries(QObject* AOwner = nullptr);
    ~TVxArrowSeries() override;

    // Length of the arrow head in pixels.
    int TipLength() const { return FTipLength; }
    void SetTipLength(int Value);
    // Width parameter of the arrow head in pixels (see DrawArrow).
    int TipWidth() const { return FTipWidth; }
    void SetTipWidth(int Value);
    // x and y components of each arrow (data units, signed).
    TVxCustomRealVector* dXData() const { return FdXData; }
    void SetDX(TVxCustomRealVector* Vector);
    TVxCustomRealVector* dYData() const { return FdYData; }
    void SetDY(TVxCustomRealVector* Vector);

    // Component of arrow I in force for ranges and drawing (0 when hidden or missing).
    double GetDX(int I) const;
    double GetDY(int I) const;
    // Pixel position of each arrow's tip.
    const TVxIntegerVector& TipX() const { return *FTipX; }
    const TVxIntegerVector& TipY() const { return *FTipY; }

    // Showing or hiding the line style also rescans the ranges and remaps the tips.
    void Modified() override;
    void GetNewXStartStop() override;
    void GetNewYStartStop() override;
    bool HasPlainRangeScan() const override { return false; }
    void CalculatePoint(int Index) override;
    void DrawLine(TCanvas& Canvas) override;
    void WriteToIni(TVxIniList& List, const QString& Section) const override;
    void ReadFromIni(TVxIniList& List, const QString& Section) override;

protected:
    enum : int { wrdXData = wrFirstFree, wrdYData };
    bool CanKeepPixels() const override;
    void VectorRefs(std::vector<TVectorRef>& Refs) const override;
    // From the start to the end of the arrow.
    void SpanOf(bool XSide, int Index, double V, double& Lo, double& Hi) const override;
    void ComponentRemoved(int Role) override;
    void CalculatePointRange(int From, int To) override { CalculateEachPoint(From, To); }

private:
    int FTipLength = 10;
    int FTipWidth = 3;
    // Line style visibility the ranges and tips were last computed with.
    bool FArrowsShown = true;
    QPointer<TVxCustomRealVector> FdXData;
    QPointer<TVxCustomRealVector> FdYData;
    std::unique_ptr<TVxIntegerVector> FTipX;
    std::unique_ptr<TVxIntegerVector> FTipY;
};

} // namespace vx
