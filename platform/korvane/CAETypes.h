#pragma once

/// The kinds of objects. Any value may be passed in the enumeration; those without a name here do not have a
/// class of their own, cannot be created and are called "Unknown".
enum _tagCAEObjectType : int {
    CAE_PART = 0,
    CAE_SUBASSEMBLY = 1,
    CAE_FILE = 3,
    CAE_PROJECT = 4,
    CAE_MODEL = 5,
    CAE_ITERATION = 6,
    CAE_ITERATION_FOLDER = 7,
    CAE_ITERATION_MODEL = 8,
    CAE_ASSEMBLY_FOLDER = 9,
    CAE_LOADCASE_VIEW_FOLDER = 21,
    CAE_LOADCASE_VIEW = 22,
    CAE_VIEW_ITEM = 23,
    CAE_SESSION_OBJECT = 26,
    CAE_TAG = 41,
    CAE_UNKNOWN_OBJECT = 43,
};

/// The kinds of files. The first three have roles of their own on parts, sub-assemblies and run assemblies;
/// every other one is a custom file. Any value may be passed in the enumeration.
enum _tagFileType : int {
    CAE_FILE_UNKNOWN = 0,
    CAE_FILE_CAD = 1,
    CAE_FILE_MESH = 2,
    CAE_FILE_GRAPHIC = 3,
    CAE_FILE_DECK = 4,
    CAE_FILE_INCLUDE = 5,
    CAE_FILE_RESULT = 6,
    CAE_FILE_REPORT = 7,
    CAE_FILE_PICTURE = 8,
    CAE_FILE_SCRIPT = 9,
    CAE_FILE_LOG = 10,
    CAE_FILE_TABLE = 11,
    CAE_FILE_ARCHIVE = 12,
    CAE_FILE_OTHER = 13,
};

/// The format of a file's content. Any value may be passed in the enumeration.
enum _tagFileFormat : int {
    CAE_FORMAT_UNKNOWN = 0,
    CAE_FORMAT_ASCII = 1,
    CAE_FORMAT_BINARY = 2,
};
