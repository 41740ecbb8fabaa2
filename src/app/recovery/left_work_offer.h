// Offers at the start what other runs of the editor left unsaved, and does what is chosen.
#pragma once

#include <QImage>
#include <QWidget>
#include <filesystem>
#include <functional>

#include "platform/outcome.h"
#include "recovery/left_work.h"
#include "workspace/workspace.h"

namespace sonavel {

// Nothing happens where nothing was left; `beforeAsking` is called otherwise. The last failure when
// work could not be recovered or removed; such work stays where it is.
Outcome OfferLeftWork(const std::filesystem::path& folder, Workspace& workspace, QWidget* parent,
                      const std::function<void()>& beforeAsking);

// The sound as it would come back, drawn small; null for one that is too long to be looked at in
// passing, or cannot be read. `size` in pixels of the screen.
QImage PictureOfLeftWork(const recovery::LeftWork& work, const HostServices& services,
                         const QSize& size);

}  // namespace sonavel
