// How a run that polls a progress window ended.
#pragma once

namespace sonavel {

enum class RunEnd { kFinished, kCancelled };

}  // namespace sonavel
