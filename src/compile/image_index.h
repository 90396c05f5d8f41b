/// The sections of the loaded image by kind, name and id. Stands beside the list of sections because walking all of it
/// for every query would make each as slow as the image is large. Relies on image_stamp.h, tables.h.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compile/image_stamp.h"
#include "compile/tables.h"
#include "model/key_table.h"

namespace zek {

/// What a look-up among the sections of one kind found, and whether there was anything to compare.
struct Found {
    tagGCSECT* section = nullptr;
    bool compared = false;
};

/// Names or ids with the first sections that have them.
template <class Key>
struct FirstSections {
    KeyTable<Key, tagGCSECT*> keys;
    bool any = false;         ///< whether a section had anything to compare
    TableSet tables = 0;      ///< those that their identifiers are of
    std::uint64_t stamp = 0;  ///< of these tables when they were read
};

class ImageIndex {
public:
    /// The sections with this identifier in order. They are made anew when our functions have replaced the list or a
    /// table; a host that changes a long list itself is followed when it changes its size, or the first or last
    /// section. In a short list it is followed always, but for changes within the entries of a kind of which one
    /// section has many.
    const std::vector<tagGCSECT*>& Sections(unsigned identifier);
    /// The first of them whose NAME, or in sections of free names whose entry's name, is this text. Names and IDs are
    /// read anew when a table that one of their identifiers is of has got a key, or its size has changed.
    Found Named(unsigned identifier, const std::string& name);
    /// The first of them whose ID is this number.
    Found WithID(unsigned identifier, unsigned number);

private:
    using Names = FirstSections<std::string_view>;
    using IDs = FirstSections<unsigned>;
    struct Kind {
        unsigned identifier = 0;
        bool isCollected = false;  ///< the sections are those of this identifier, even where there are none
        std::vector<tagGCSECT*> sections;
        std::vector<std::span<const tagGCENTRY>> entries;  ///< where those of each stood
        std::optional<Names> names;                        ///< read when the first name is asked for
        std::optional<IDs> ids;                            ///< read when the first id is asked for
    };
    /// The kind of an identifier, brought up to date.
    Kind& KindOf(unsigned identifier);
    void SortByKind();
    Kind& OfShortList(Kind& kept, unsigned identifier);
    static bool HasLongSection(const Kind& kind);
    static bool IsKept(const Kind& kind, unsigned identifier);
    Kind& CollectOther(unsigned identifier);
    static Names ReadNames(const Kind& kind);
    static IDs ReadIDs(const Kind& kind);
    template <class Key>
    static bool IsInStep(const std::optional<FirstSections<Key>>& firsts) {
        return firsts && firsts->stamp == StampOf(firsts->tables);
    }
    template <class Key>
    static Found Find(const FirstSections<Key>& firsts, const Key& key);

    SectionsStamp stamp_;
    std::array<Kind, 12> kinds_;  ///< by the ordinal of the identifiers that the compiler writes
    Kind other_;                  ///< the kind of any other identifier, or of a short list: the last that was asked for
};

}  // namespace zek
