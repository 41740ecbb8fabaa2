#include "app/save_warning_text.h"

#include "document/file_kind.h"

namespace sonavel {

std::string SaveWarningText(const CSoundDoc& document, const SaveAsChoice& choice) {
    const std::string extension = ExtensionFromFirstDot(choice.path);
    if (FileKindOfExtension(extension) != FileKind::kUnknown) return document.SaveWarning(choice);
    if (extension.find('/') != std::string::npos)
        return "Nothing can be saved here: the name of a folder has a \".\" in it.";
    return "Nothing can be saved under this name: it must end in .wav, .au, .snd, .aiff or .aif.";
}

}  // namespace sonavel
