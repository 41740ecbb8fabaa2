// Whose ears are listened with, out of a SOFA file: read and analysed beside the calling thread.
#pragma once

#include <filesystem>

#include "codec/client/child_codecs.h"
#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "spatial/listener.h"

namespace sonavel {

// The window shows how far it is, and cancels. Fails, and leaves the listener as it is, when the
// file cannot be used.
Outcome ReadListener(const ChildCodecs& codecs, const std::filesystem::path& path,
                     ProgressWindow& window, Listener& listener);

}  // namespace sonavel
