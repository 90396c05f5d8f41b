/// The typed data of an entry: a number, a text, a list, a value record or a repeater item, by the class of its type
/// id. Relies on ge_value.h.
#pragma once

#include <vector>

#include "model/ge_value.h"
#include "zekcomp/api.h"

class ZEK_API CZekEntryData {
public:
    CZekEntryData();
    explicit CZekEntryData(unsigned type);
    CZekEntryData(const CZekEntryData& other);
    CZekEntryData& operator=(const CZekEntryData& other);
    ~CZekEntryData();

    /// Stores the type id and allocates the data of its class; for a class without data the pointer is left as it was.
    /// Frees nothing: a used holder is `Destory`ed first.
    void Create(unsigned int type);
    unsigned GetType() const;
    /// The data, owned by the holder; null when there is none. Read it through NumberOf, TextOf, ListOf, ValueOf,
    /// RepeaterOf.
    void* GetData() const;
    /// Frees the data and empties the holder.
    void Destory();

    void GetBuffer(std::vector<unsigned char>& out);
    /// Throws `std::out_of_range` when the buffer ends early; what was read before stays.
    void SetBuffer(const std::vector<unsigned char>& in);

    unsigned m_dwType = 0;
    /// Whether an entry holds it, so that changing it changes a model; a copy that a host makes belongs to none. Stands
    /// in the padding before the pointer.
    bool m_bOfEntry = false;
    void* m_pData = nullptr;
};

namespace zek {

// The data as what it is; null when the holder is of another class or holds nothing. The holder keeps ownership.
unsigned* NumberOf(const CZekEntryData& data);
std::string* TextOf(const CZekEntryData& data);
TextList* ListOf(const CZekEntryData& data);
CGeValue* ValueOf(const CZekEntryData& data);
/// A repeater item: two strings (count, action name) and the list of parameters; empty when the holder is no repeater
/// item.
Payload RepeaterOf(const CZekEntryData& data);

/// The strings and list behind a text, a list, a value or a repeater item; empty for a number.
Payload PayloadOf(const CZekEntryData& data);

/// The same for data of the class of `type`.
Payload PayloadOf(void* data, unsigned type);

void PutEntryData(ByteWriter& out, const CZekEntryData& data);
void TakeEntryData(ByteReader& in, CZekEntryData& data);

}  // namespace zek
