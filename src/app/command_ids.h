// The numbers of the commands that the application, the frame and the document handle.
#pragma once

namespace sonavel::app_command {

enum Id : int {
    kRecord = 32779,
    kPreferences = 32830,
    kSaveAll = 32844,
    kSampleDatabase = 32878,
    // Commands that came later.
    kCloseAll = 33101,
    kTabs = 33102,
    kFileProperties = 33104,
    kCloseOthers = 33105,
    kImport = 33110,
    kExport = 33111,
    kSaveCopy = 33112,
    kExportSelection = 33113,
    kOriginLine = 33114,
    kReadAgain = 33118,
    kManual = 33120,
    kManualKeys = 33121,
    kWhatsNew = 33122,
    kExportRegions = 33451,
    kImportMarkers = 33452,
    kExportMarkers = 33453,
    kPalette = 33454,
    kKeys = 33455,
    kRunScript = 33456,
    kCopyAsScript = 33457,
    kStatusBar = 59393,
    kNew = 57600,
    kOpen = 57601,
    kClose = 57602,
    kSave = 57603,
    kSaveAs = 57604,
    kCascade = 57650,
    kTileHorizontally = 57651,
    kTileVertically = 57652,
    kAbout = 57664,
    kExit = 57665,
    kNextWindow = 61504,
    kPreviousWindow = 61520,
};

}  // namespace sonavel::app_command
