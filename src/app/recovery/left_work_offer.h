// Offers at the start what other runs of the editor left unsaved, and does what is chosen.
#pragma once

#include <QImage>
#include <QWidget>
#include <filesystem>

#include "platform/outcome.h"
#include "recovery/left_work.h"
#include "workspace/workspace.h"

namespace sonavel {

// Nothing happens where nothing was left. The last failure when work could not be recovered or
// removed; such work stays where it is.
Outcome OfferLeftWork(const std::filesystem::path& folder, Workspace& workspace, QWidget* parent);

// The sound as it would come back, drawn small; null for one that is too long to be looked at in
// passing, or cannot be read.
QImage PictureOfLeftWork(const recovery::LeftWork& work, const HostServices& services,
                         const QSize& size);

}  // namespace sonavel
