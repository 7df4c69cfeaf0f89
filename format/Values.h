#pragma once

/// Values and names of entries that the format itself fixes.
namespace format {

/// The value of the root's "subType": what wrote the document.
inline constexpr const char* kSubTypeValue = "SDM";

/// The "name" of an object that has none.
inline constexpr const char* kNameless = "model";

/// The "studyTypeName" of an iteration that hangs below no study.
inline constexpr const char* kGenericStudy = "Generic";

/// The "filePath" of every file: the path is made again from the project's directory and the name.
inline constexpr const char* kNoFilePath = "";

/// The text that sets a flag of a file; every other one clears it.
inline constexpr const char* kTrue = "true";

/// The metadata entry that is written under another name, and that name.
inline constexpr const char* kDescriptionEntry = "Description";
inline constexpr const char* kDescriptionMember = "description";

/// The metadata entry that clears the project's program reference, and the value that does so in any letter
/// case.
inline constexpr const char* kProgramReferenceEntry = "Reference To Program";
inline constexpr const char* kNoProgramReference = "No";

}  // namespace format
