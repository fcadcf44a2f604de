#include "Scenario.h"

namespace BackgroundBench {

Tamborel::BlitFrameRecord Scenario::Record() const {
    Tamborel::BlitFrameRecord record;
    record.useThemeBackground = 1;
    record.innerBorderEnabled = 1;
    record.windowMetrics = {static_cast<float>(width), static_cast<float>(height), 0.0F, 0.0F};
    record.chromeMetrics = {8.0F, 32.0F, 1.0F};
    record.titleBarFill = {0.1F, 0.1F, 0.1F, 0.6F};
    record.frameFill = {0.1F, 0.1F, 0.1F, 0.6F};
    record.innerBorderColor = {1.0F, 1.0F, 1.0F, 0.2F};
    return record;
}

Tamborel::BackgroundTuning Scenario::Tuning() const {
    Tamborel::BackgroundTuning tuning;
    tuning.emberStrength = 0.0F;  // as the launcher has it
    if (spacing != 0) tuning.sampleSpacing = spacing;
    return tuning;
}

}  // namespace BackgroundBench
