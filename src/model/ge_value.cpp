#include "model/ge_value.h"

#include "zekcomp/value_shapes.h"

namespace zek {

namespace {

PayloadShape PayloadShapeOf(unsigned type) {
    const ValueShape* shape = ShapeOf(type);
    return shape ? PayloadShape{shape->operands.size(), shape->list} : PayloadShape{};
}

}  // namespace

Payload PayloadOf(const CGeValue& value) { return PayloadAt(value.m_pData, PayloadShapeOf(value.m_dwType)); }

void PutValue(ByteWriter& out, const CGeValue& value) {
    out.U32(value.m_dwType);
    out.Str(value.m_strType);
    PutPayload(out, PayloadOf(value));
}

void TakeValue(ByteReader& in, CGeValue& value) {
    value.Destory();
    const unsigned type = in.U32();
    value.Create(type, in.Str());
    TakePayload(in, PayloadOf(value));
}

}  // namespace zek

CGeValue::CGeValue() = default;

CGeValue::CGeValue(unsigned type, const std::string& text) { Create(type, text); }

CGeValue::CGeValue(const CGeValue& other) : CGeValue() { *this = other; }

CGeValue& CGeValue::operator=(const CGeValue& other) {
    if (this == &other) return *this;
    Destory();
    Create(other.m_dwType, other.m_strType);
    zek::CopyPayload(zek::PayloadOf(other), zek::PayloadOf(*this));
    return *this;
}

CGeValue::~CGeValue() { Destory(); }

void CGeValue::Create(unsigned type, const std::string& text) {
    m_dwType = type;
    m_strType = text;
    if (zek::ShapeOf(type)) m_pData = zek::NewPayload(zek::PayloadShapeOf(type));
}

unsigned CGeValue::GetType() const { return m_dwType; }

const std::string& CGeValue::GetStrType() const { return m_strType; }

void* CGeValue::GetData() const { return m_pData; }

void CGeValue::Destory() {
    if (zek::ShapeOf(m_dwType)) zek::FreePayload(m_pData, zek::PayloadShapeOf(m_dwType));
    m_pData = nullptr;
    m_dwType = 0;
    m_strType.clear();
}

void CGeValue::GetBuffer(std::vector<unsigned char>& out) {
    zek::FillBuffer(out, [this](zek::ByteWriter& writer) { zek::PutValue(writer, *this); });
}

void CGeValue::SetBuffer(const std::vector<unsigned char>& in) {
    zek::ByteReader reader(in);
    zek::TakeValue(reader, *this);
}
