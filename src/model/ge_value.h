/// The record behind a VALUE entry: a value type, the text that named it, and the payload of that type. Relies on
/// payload.h.
#pragma once

#include <string>
#include <vector>

#include "model/payload.h"
#include "zekcomp/api.h"

class ZEK_API CGeValue {
public:
    CGeValue();
    CGeValue(unsigned type, const std::string& text);
    CGeValue(const CGeValue& other);
    CGeValue& operator=(const CGeValue& other);
    ~CGeValue();

    /// Stores type and text and allocates the empty payload of the type. Frees nothing: a used record is `Destory`ed
    /// first.
    void Create(unsigned type, const std::string& text);
    unsigned GetType() const;
    const std::string& GetStrType() const;
    /// The payload, owned by the record; null for a type without one.
    void* GetData() const;
    /// Frees the payload and empties the record.
    void Destory();

    void GetBuffer(std::vector<unsigned char>& out);
    /// Throws `std::out_of_range` when the buffer ends early; what was read before stays.
    void SetBuffer(const std::vector<unsigned char>& in);

    unsigned m_dwType = 0;
    void* m_pData = nullptr;
    std::string m_strType;
};

namespace zek {

Payload PayloadOf(const CGeValue& value);
void PutValue(ByteWriter& out, const CGeValue& value);
void TakeValue(ByteReader& in, CGeValue& value);

}  // namespace zek
