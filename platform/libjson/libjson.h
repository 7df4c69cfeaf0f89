#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#if defined(_WIN32)
#if defined(LIBJSON_BUILD)
#define LIBJSON_API __declspec(dllexport)
#else
#define LIBJSON_API __declspec(dllimport)
#endif
#else
#define LIBJSON_API __attribute__((visibility("default")))
#endif

/// The six types of a node. Compare and construct with the names only, never with their values.
inline constexpr char JSON_NULL = 0;
inline constexpr char JSON_STRING = 1;
inline constexpr char JSON_NUMBER = 2;
inline constexpr char JSON_BOOL = 3;
inline constexpr char JSON_ARRAY = 4;
inline constexpr char JSON_NODE = 5;

using json_char = char;
using json_index_t = unsigned int;
using json_int_t = long long;

#if defined(LIBJSON_OWN_STRING_ALLOCATOR)
namespace libjson {
/// An allocator that differs from std::allocator in nothing but its type: a build with it finds every place
/// that takes json_string for std::string.
template <class T>
struct string_allocator {
    using value_type = T;
    string_allocator() noexcept = default;
    template <class U>
    string_allocator(const string_allocator<U>&) noexcept {}
    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* texts, std::size_t count) noexcept { std::allocator<T>().deallocate(texts, count); }
    template <class U>
    bool operator==(const string_allocator<U>&) const noexcept {
        return true;
    }
};
}  // namespace libjson
using json_string =
    std::basic_string<json_char, std::char_traits<json_char>, libjson::string_allocator<json_char>>;
#else
/// Text of names, values and documents. Some builds of libjson give it an allocator of its own: convert
/// through c_str() and size(), and never assume that it is std::string.
using json_string = std::string;
#endif

namespace libjson::detail {
struct NodeAccess;

/// A pointer to a node, or a short node itself; an unnamed empty object from the start.
struct Handle {
    std::uint64_t bits = 0xB;
};
}  // namespace libjson::detail

/// A JSON value with an optional name: null, string, number, boolean, array or object ("node").
///
/// A JSONNode is a handle, one pointer wide. Copying it shares the value behind it; a change through one
/// handle first gives that handle a value of its own, so no other holder ever sees the change. Only the
/// changed node itself is copied then: its children stay shared.
///
/// The operations that return changeable children (begin, end, find, at and operator[] on a node that is not
/// const) give the node a value of its own first. The references and iterators that they return are invalid
/// once that node is changed, copied or destroyed. The const forms copy nothing.
///
/// A node, and nodes that share anything, belong to one thread at a time. Nodes that share nothing (made
/// separately, or by duplicate()) may be used on different threads at the same time, and a whole tree may be
/// passed to another thread and be released there.
///
/// Every operation that needs memory throws std::bad_alloc when there is none, and leaves the node as it was.
/// No operation needs stack in proportion to the depth of a tree.
class LIBJSON_API JSONNode {
public:
    using iterator = JSONNode*;
    using const_iterator = const JSONNode*;

    /// An unnamed node: an empty object, an empty array, null, the empty string, the number 0 or false. A
    /// value that is not one of the six types gives null. Without an argument no memory is needed.
    explicit JSONNode(char type = JSON_NODE);

    /// A named string; a null pointer means the empty text. The form with json_string keeps NUL characters.
    JSONNode(const json_string& name, const char* value);
    JSONNode(const json_string& name, const json_string& value);

    /// A named boolean.
    JSONNode(const json_string& name, bool value);

    /// A named number with the decimal digits of the value; the character types count as numbers here.
    JSONNode(const json_string& name, char value);
    JSONNode(const json_string& name, signed char value);
    JSONNode(const json_string& name, unsigned char value);
    JSONNode(const json_string& name, short value);
    JSONNode(const json_string& name, unsigned short value);
    JSONNode(const json_string& name, int value);
    JSONNode(const json_string& name, unsigned int value);
    JSONNode(const json_string& name, long value);
    JSONNode(const json_string& name, unsigned long value);
    JSONNode(const json_string& name, long long value);
    JSONNode(const json_string& name, unsigned long long value);

    /// A named number with the fewest digits that read back as the same value (a long double is taken as the
    /// nearest double). JSON has no infinities and no NaN: they give a named null.
    JSONNode(const json_string& name, float value);
    JSONNode(const json_string& name, double value);
    JSONNode(const json_string& name, long double value);

    /// Shares the other's value.
    JSONNode(const JSONNode& other) noexcept;
    JSONNode& operator=(const JSONNode& other) noexcept;

    /// Takes the other's value over; the other becomes an unnamed empty object.
    JSONNode(JSONNode&& other) noexcept : handle_(other.handle_) { other.handle_ = {}; }
    JSONNode& operator=(JSONNode&& other) noexcept;

    ~JSONNode();

    /// One of the six types.
    unsigned char type() const noexcept;

    /// The name; empty where there is none.
    json_string name() const;
    void set_name(const json_string& name);

    /// The number of children: members of an object, elements of an array. Other types have none.
    json_index_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }

    /// Removes all children and keeps type and name; does nothing to types that have no children.
    void clear();

    /// Makes room for a number of children in one step; does nothing to types that have no children.
    void reserve(json_index_t capacity);

    /// Appends the child, shared. There is no check for equal names, and an element of an array keeps its
    /// name. On a node that is neither an array nor an object nothing happens. Throws std::length_error
    /// beyond 2^32 - 1 children.
    void push_back(const JSONNode& child);

    /// Removes the child at a position, or the first one with a name, and returns it. Throws
    /// std::out_of_range when there is none; the node is unchanged then.
    JSONNode pop_back(json_index_t position);
    JSONNode pop_back(const json_string& name);

    /// The first child with exactly that name, byte for byte; end() when there is none.
    iterator find(const json_string& name);
    const_iterator find(const json_string& name) const noexcept;
    iterator find(const char* name);
    const_iterator find(const char* name) const noexcept;

    /// The child at a position, or the first one with a name. Throws std::out_of_range when there is none.
    JSONNode& at(json_index_t position);
    const JSONNode& at(json_index_t position) const;
    JSONNode& at(const json_string& name);
    const JSONNode& at(const json_string& name) const;

    /// The same as at().
    JSONNode& operator[](json_index_t position) { return at(position); }
    const JSONNode& operator[](json_index_t position) const { return at(position); }
    JSONNode& operator[](const json_string& name) { return at(name); }
    const JSONNode& operator[](const json_string& name) const { return at(name); }

    /// The children in order; an empty range for types that have none.
    iterator begin();
    iterator end();
    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;

    /// The value as text. String: its characters, NUL included; number: the digits as they were in the text
    /// that was read; boolean: "true" or "false"; null: "null"; array and object: the empty text.
    json_string as_string() const;

    /// The value as an integer, truncated towards zero; the nearest limit where it is beyond the range of the
    /// type. A string counts as the number that its whole text spells (0 when it spells none); a boolean is 0
    /// or 1; null, array and object are 0.
    json_int_t as_int() const noexcept;

    /// The value as a double, infinite where it is beyond the range, zero where it is too small. Otherwise
    /// the rules are those of as_int().
    double as_float() const noexcept;

    /// The value as a boolean. Number: whether it is not zero; string: whether its text is "true" or spells a
    /// number that is not zero; null, array and object: false.
    bool as_bool() const noexcept;

    /// An array: this node itself, shared. An object: an array of the same children in order, their names
    /// cleared, with the object's own name. Anything else: an unnamed empty array.
    JSONNode as_array() const;

    /// An object: this node itself, shared. An array: an object of the same elements, which keep the names
    /// they have, with the array's own name. Anything else: an unnamed empty object.
    JSONNode as_node() const;

    /// A copy of the whole tree that shares nothing with this one.
    JSONNode duplicate() const;

    void swap(JSONNode& other) noexcept;

    /// Whether type, name and value are the same; children are compared in order, numbers digit by digit (1
    /// and 1.0 differ).
    bool operator==(const JSONNode& other) const;
    bool operator!=(const JSONNode& other) const { return !(*this == other); }

    /// The document as compact text: no blanks, no line breaks, the root without its name. Every character
    /// beyond printable ASCII is escaped, and so are the quote, the backslash and the slash; what an escape
    /// means is decided by the text units. A node that is neither an array nor an object gives the empty
    /// text. `reserve` is the number of bytes to make room for beforehand; it is only a hint.
    json_string write(std::size_t reserve = 1024) const;

    /// The same document for people to read: one member or element per line, indented by one tab per level
    /// (64 at most; deeper lines are not indented further), a blank on either side of the colon, LF between
    /// the lines and none at the end. Empty containers stay {} and [].
    json_string write_formatted(std::size_t reserve = 2048) const;

    /// Does nothing: documents are always read whole.
    void preparse() noexcept {}

private:
    friend struct libjson::detail::NodeAccess;

    /// Takes over one reference to the node.
    explicit JSONNode(libjson::detail::Handle handle) noexcept : handle_(handle) {}

    libjson::detail::Handle handle_;
};

namespace libjson {

/// What a character of a node's text is.
enum class text_units {
    /// A byte of a single-byte code page: every byte beyond ASCII is written as `\u0080` to `\u00FF` and
    /// read back from it. An escape above `\u00FF` gives the UTF-8 bytes of its code point.
    bytes,
    /// UTF-8: a well-formed sequence is written as the escape of its code point (a surrogate pair beyond
    /// U+FFFF). A byte that belongs to no such sequence is written as `\uDC80` to `\uDCFF` and read back from
    /// it; any other lone surrogate means its three-byte form. So every sequence of bytes survives writing
    /// and reading.
    utf8
};

/// Sets the text units of the process. Until it is called, they follow the process's code page: utf8 where
/// that is UTF-8 (everywhere but on Windows, and there if the ANSI code page is 65001), bytes where it is any
/// other. Call it once before documents are written or read; a write or parse in progress keeps the units
/// that it began with. libjson does not know about a code page that a program chooses for its own texts, for
/// example with OuSetAnsiCodePage: such a program has to set the units as well, to bytes for any code page
/// but UTF-8.
LIBJSON_API void set_text_units(text_units units) noexcept;
/// The text units that the next document is written or read with.
LIBJSON_API text_units get_text_units() noexcept;

/// Reads a whole document by the grammar of RFC 8259, with any value as the root. Numbers keep their digits,
/// equal names are all kept, and bytes from 0x80 up are taken as they are. Only memory limits nesting and
/// sizes. Throws std::invalid_argument for any other text (an empty one, text after the value, a byte order
/// mark and NUL characters included), which is a libjson::parse_error (parse_error.h). Its what() reads "line
/// 3, column 14: " and the reason; both count from 1, columns count bytes, and a line ends with LF, CR or CR
/// LF.
LIBJSON_API JSONNode parse(const json_string& text);

/// Whether parse would accept the text.
LIBJSON_API bool is_valid(const json_string& text);

using malloc_t = void* (*)(std::size_t);
using realloc_t = void* (*)(void*, std::size_t);
using free_t = void (*)(void*);

/// From now on the memory of nodes comes from these functions, where a null pointer means the C library's own
/// function. They behave as malloc, realloc and free do, are called on any thread, and must not use libjson
/// themselves. Memory is released with the functions that were registered together with the one that it came
/// from. Where a function returns null, the current operation throws std::bad_alloc. Nodes are kept in blocks
/// of a megabyte; texts and lists of children that are too large for them have blocks of their own. A block
/// is released as soon as it holds nothing but what threads keep ready for their next nodes; one empty block
/// is kept, and names that many nodes have are kept for the life of the process.
LIBJSON_API void register_memory_callbacks(malloc_t allocate, realloc_t reallocate, free_t release) noexcept;

}  // namespace libjson
