#pragma once
#include <QPaintDevice>

namespace kova::test {

/// Hands what is painted on it to an engine.
class RecordingDevice : public QPaintDevice {
  public:
    RecordingDevice(QPaintEngine& engine, const QSize& pixels, int dotsPerInch)
        : engine_(engine), pixels_(pixels), dotsPerInch_(dotsPerInch) {}
    [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    [[nodiscard]] int metric(PaintDeviceMetric which) const override {
        switch (which) {
        case PdmWidth:
            return pixels_.width();
        case PdmHeight:
            return pixels_.height();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return dotsPerInch_;
        }
    }

  private:
    QPaintEngine& engine_;
    QSize pixels_;
    int dotsPerInch_;
};

} // namespace kova::test
