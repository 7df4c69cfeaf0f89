#pragma once

/// @file
/// All that the product takes from the suite: its headers, and names of our own for what its headers may name
/// in their own way. To build against a suite whose headers are cut differently, change this file alone.

#include <CAEFile.h>
#include <CAEFunctions.h>
#include <CAEObject.h>
#include <CAEPart.h>
#include <CAEProject.h>
#include <CAERunAssembly.h>
#include <CAESubAssembly.h>
#include <CAETypes.h>
#include <CAEViewItem.h>
#include <OuArray.h>
#include <OuCRTAllocator.h>
#include <OuList.h>
#include <OuString.h>
#include <OuStringFileName.h>
#include <OuTemplateArray.h>
#if defined(_WIN32)
#include <PimuUtil.h>
#endif

#include <utility>

#include "format/Kinds.h"

/// A place in a list of the suite. It is only handed back to the list, and false behind the last element.
using ListPosition = decltype(std::declval<OuList&>().GetHeadPosition());

/// The texts that the object model fills in.
using TextArray = OuTemplateArray<OuString, OuCRTAllocator>;

inline format::Kind KindOf(CAEObject& object) {
    return static_cast<format::Kind>(object.getType());
}

inline _tagCAEObjectType ToObjectType(format::Kind kind) {
    return static_cast<_tagCAEObjectType>(kind);
}

inline format::FileType FileTypeOf(CAEFile& file) {
    return static_cast<format::FileType>(file.getFileType());
}

inline format::FileFormat FileFormatOf(CAEFile& file) {
    return static_cast<format::FileFormat>(file.getFileFormat());
}

inline _tagFileFormat ToFileFormat(format::FileFormat format) {
    return static_cast<_tagFileFormat>(format);
}

/// A text that the object model owns; a null one counts as empty.
inline OuString TextOfModel(const char* text) {
    return text == nullptr ? OuString() : OuString(text, 0);
}
