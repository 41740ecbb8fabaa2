// How a document comes back out of what was kept of its unsaved work.
#include <utility>

#include "document/sound_doc.h"
#include "sound/file_formats.h"

namespace sonavel {

Outcome CSoundDoc::RestoreFile(const FileOrigin& origin, const std::filesystem::path& copy) {
    Outcome read = Done();
    if (origin.import) {
        read = ReadImport(copy, *origin.import);
    } else {
        const FileFormat* format = FileFormatOfExtension(ExtensionFromFirstDot(origin.path));
        if (!format) return Failed("The records name a file of no known format.");
        Result<sonavel::Sound> sound =
            format->read(copy, {.progress = &services_.progress, .warn = {}, .note = {}});
        read = sound.Ended();
        if (sound) sound_.Adopt(*std::move(sound));
    }
    if (!read) return read;
    TakePath(origin.path);
    file_ = origin;
    ForgetHistory();
    TellChanged(0);
    return Done();
}

Outcome CSoundDoc::RestoreSound(sonavel::Sound&& sound) {
    sound_.Adopt(std::move(sound));
    ForgetHistory();
    TellChanged(0);
    return Done();
}

void CSoundDoc::RestoreOrigin(ImportOrigin origin, std::vector<ForeignChunk> chunks) {
    origin_ = std::move(origin);
    extras_.chunks = std::move(chunks);
}

void CSoundDoc::RestoreName(const std::filesystem::path& path, std::string_view title,
                            const std::optional<FileIdentity>& identity) {
    path_ = path;
    file_.reset();
    if (identity) file_ = FileOrigin{path, *identity, {}};
    SetTitle(title);
}

}  // namespace sonavel
