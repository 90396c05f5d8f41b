#include "model/entry_data.h"

#include <iterator>
#include <memory>
#include <new>

#include "model/state.h"
#include "model/type_ids.h"

namespace zek {

namespace {

struct ClassShape {
    unsigned entryClass;
    PayloadShape shape;
};

/// The classes whose data is strings and a list, one behind the other.
constexpr ClassShape kClassShapes[] = {
    {kTextClass, {1, false}},
    {kListClass, {0, true}},
    {kRepeaterClass, {2, true}},
};
static_assert(std::size(kClassShapes) == 3, "numbers and values have data of their own");

/// Null for a class whose data is no such payload.
const PayloadShape* ShapeOfClass(unsigned type) {
    for (const ClassShape& row : kClassShapes) {
        if (row.entryClass == EntryClass(type)) return &row.shape;
    }
    return nullptr;
}

template <class Data>
void FreeInPool(Data* data) {
    if (!data) return;
    std::destroy_at(data);
    g_pool.Give(data, sizeof(Data));
}

bool Holds(const CZekEntryData& data, unsigned entryClass) {
    return data.m_pData && EntryClass(data.m_dwType) == entryClass;
}

}  // namespace

unsigned* NumberOf(const CZekEntryData& data) {
    return Holds(data, kNumberClass) ? static_cast<unsigned*>(data.m_pData) : nullptr;
}

std::string* TextOf(const CZekEntryData& data) {
    return Holds(data, kTextClass) ? static_cast<std::string*>(data.m_pData) : nullptr;
}

TextList* ListOf(const CZekEntryData& data) {
    return Holds(data, kListClass) ? static_cast<TextList*>(data.m_pData) : nullptr;
}

CGeValue* ValueOf(const CZekEntryData& data) {
    return Holds(data, kValueClass) ? static_cast<CGeValue*>(data.m_pData) : nullptr;
}

Payload RepeaterOf(const CZekEntryData& data) { return Holds(data, kRepeaterClass) ? PayloadOf(data) : Payload{}; }

Payload PayloadOf(const CZekEntryData& data) { return PayloadOf(data.m_pData, data.m_dwType); }

Payload PayloadOf(void* data, unsigned type) {
    if (data && EntryClass(type) == kValueClass) return PayloadOf(*static_cast<const CGeValue*>(data));
    const PayloadShape* shape = ShapeOfClass(type);
    return shape ? PayloadAt(data, *shape) : Payload{};
}

void PutEntryData(ByteWriter& out, const CZekEntryData& data) {
    out.U32(data.m_dwType);
    if (const unsigned* number = NumberOf(data)) return out.U32(*number);
    if (const CGeValue* value = ValueOf(data)) return out.Block([&] { PutValue(out, *value); });
    PutPayload(out, PayloadOf(data));
}

void TakeEntryData(ByteReader& in, CZekEntryData& data) {
    data.Destory();
    data.Create(in.U32());
    if (unsigned* number = NumberOf(data)) {
        *number = in.U32();
    } else if (CGeValue* value = ValueOf(data)) {
        ByteReader block = in.Block();
        TakeValue(block, *value);
    } else {
        TakePayload(in, PayloadOf(data));
    }
}

}  // namespace zek

CZekEntryData::CZekEntryData() = default;

CZekEntryData::CZekEntryData(unsigned type) { Create(type); }

CZekEntryData::CZekEntryData(const CZekEntryData& other) : CZekEntryData() { *this = other; }

CZekEntryData& CZekEntryData::operator=(const CZekEntryData& other) {
    if (this == &other) return *this;
    Destory();
    Create(other.m_dwType);
    if (const unsigned* number = zek::NumberOf(other)) {
        *zek::NumberOf(*this) = *number;
    } else if (const CGeValue* value = zek::ValueOf(other)) {
        *zek::ValueOf(*this) = *value;
    } else if (other.m_pData) {
        zek::CopyPayload(zek::PayloadOf(other), zek::PayloadOf(*this));
    }
    return *this;
}

CZekEntryData::~CZekEntryData() { Destory(); }

void CZekEntryData::Create(unsigned int type) {
    if (m_bOfEntry) ++zek::g_modelChanges;
    m_dwType = type;
    if (zek::EntryClass(type) == zek::kNumberClass) m_pData = zek::g_pool.New<unsigned>(0U);
    if (zek::EntryClass(type) == zek::kValueClass) m_pData = zek::g_pool.New<CGeValue>();
    if (const zek::PayloadShape* shape = zek::ShapeOfClass(type)) m_pData = zek::NewPayload(*shape);
}

unsigned CZekEntryData::GetType() const { return m_dwType; }

void* CZekEntryData::GetData() const { return m_pData; }

void CZekEntryData::Destory() {
    if (m_bOfEntry) ++zek::g_modelChanges;
    zek::FreeInPool(zek::NumberOf(*this));
    zek::FreeInPool(zek::ValueOf(*this));
    if (const zek::PayloadShape* shape = zek::ShapeOfClass(m_dwType)) zek::FreePayload(m_pData, *shape);
    m_dwType = 0;
    m_pData = nullptr;
}

void CZekEntryData::GetBuffer(std::vector<unsigned char>& out) {
    zek::FillBuffer(out, [this](zek::ByteWriter& writer) { zek::PutEntryData(writer, *this); });
}

void CZekEntryData::SetBuffer(const std::vector<unsigned char>& in) {
    zek::ByteReader reader(in);
    zek::TakeEntryData(reader, *this);
}
