// How much of a file is wanted.
#pragma once

namespace sonavel {

enum class DecodeExtent { kHeadAlone, kAll };

}  // namespace sonavel
