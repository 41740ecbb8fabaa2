// Whose ears are listened with, out of a SOFA file: read and analysed beside the calling thread.
#pragma once

#include <filesystem>
#include <functional>

#include "codec/client/child_codecs.h"
#include "platform/outcome.h"
#include "spatial/listener.h"

namespace sonavel {

// `poll` is called now and then meanwhile; true cancels. Fails, and leaves the listener as it is,
// when the file cannot be used.
Outcome ReadListener(const ChildCodecs& codecs, const std::filesystem::path& path,
                     const std::function<bool()>& poll, Listener& listener);

}  // namespace sonavel
