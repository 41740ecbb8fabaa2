#include "platform/frame_out.h"

namespace sonavel {

std::unique_ptr<FrameOut> WaveDevices::CreateFrameOut() {
    return nullptr;
}

}  // namespace sonavel
