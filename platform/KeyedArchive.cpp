// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/KeyedArchive.h"

#include "platform/Logging.h"
#include "platform/PropertyListShape.h"

#include <QScopedPointer>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <plist/plist.h>
#include <string_view>

namespace platform {

namespace {

constexpr const char *archiverName = "NSKeyedArchiver";
constexpr const char *rootClassName = "NSObject";
constexpr quint64 archiveVersion = 100000;

// Negative numbers have a constructor of their own since libplist 2.3; before, an unsigned one of 64 bits was
// written as it is, and read by everyone as the negative number it stands for.
plist_t newInteger(qint64 value)
{
#ifdef FLIPSIDE_PLIST_HAS_SIGNED_INTEGERS
    return plist_new_int(value);
#else
    return plist_new_uint(quint64(value));
#endif
}

plist_t newClassDescription(const char *className)
{
    plist_t classes = plist_new_array();
    plist_array_append_item(classes, plist_new_string(className));
    plist_array_append_item(classes, plist_new_string(rootClassName));
    plist_t description = plist_new_dict();
    plist_dict_set_item(description, "$classname", plist_new_string(className));
    plist_dict_set_item(description, "$classes", classes);
    return description;
}

bool isOfType(plist_t node, plist_type type)
{
    return node && plist_get_node_type(node) == type;
}

std::string_view stringValue(plist_t node)
{
    if (!isOfType(node, PLIST_STRING))
        return {};
    uint64_t length = 0;
    const char *string = plist_get_string_ptr(node, &length);
    return string ? std::string_view(string, length) : std::string_view();
}

std::optional<quint64> integerValue(plist_t node)
{
    if (!isOfType(node, PLIST_UINT))
        return {};
    uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return value;
}

std::optional<double> realValue(plist_t node)
{
    if (!isOfType(node, PLIST_REAL))
        return {};
    double value = 0.0;
    plist_get_real_val(node, &value);
    return value;
}

// A reference of the binary form has a type of its own; in XML it is a dictionary with one special key.
std::optional<quint64> referenceValue(plist_t node)
{
    if (isOfType(node, PLIST_DICT) && plist_dict_get_size(node) == 1)
        return integerValue(plist_dict_get_item(node, "CF$UID"));
    if (!isOfType(node, PLIST_UID))
        return {};
    uint64_t value = 0;
    plist_get_uid_val(node, &value);
    return value;
}

// The object that a reference stands for; null when it is no reference, or to nothing.
plist_t referredObject(plist_t objects, plist_t reference)
{
    const auto index = referenceValue(reference);
    const bool exists = index && *index < plist_array_get_size(objects);
    return exists ? plist_array_get_item(objects, quint32(*index)) : nullptr;
}

// libplist reads the floating-point numbers of an XML list with strtod(), which takes the decimal point from
// the user's locale.
class PlainNumbers {
public:
    PlainNumbers()
        : m_plain(newlocale(LC_NUMERIC_MASK, "C", nullptr))
        , m_previous(uselocale(m_plain))
    {
    }
    ~PlainNumbers()
    {
        uselocale(m_previous);
        freelocale(m_plain);
    }
    PlainNumbers(const PlainNumbers &) = delete;
    PlainNumbers &operator=(const PlainNumbers &) = delete;

private:
    locale_t m_plain;
    locale_t m_previous;
};

PropertyList parse(const QByteArray &data)
{
    const PlainNumbers plainNumbers;
    plist_t parsed = nullptr;
    if (!isPropertyListOfBoundedShape(data))
        return nullptr;
    if (isBinaryPropertyList(data))
        plist_from_bin(data.constData(), quint32(data.size()), &parsed);
    else
        plist_from_xml(data.constData(), quint32(data.size()), &parsed);
    return PropertyList(parsed);
}

plist_t rootObject(plist_t archive, const char *className)
{
    if (!isOfType(archive, PLIST_DICT)
        || stringValue(plist_dict_get_item(archive, "$archiver")) != archiverName
        || integerValue(plist_dict_get_item(archive, "$version")) != archiveVersion)
        return nullptr;
    plist_t top = plist_dict_get_item(archive, "$top");
    plist_t objects = plist_dict_get_item(archive, "$objects");
    if (!isOfType(top, PLIST_DICT) || !isOfType(objects, PLIST_ARRAY))
        return nullptr;
    plist_t object = referredObject(objects, plist_dict_get_item(top, "root"));
    if (!isOfType(object, PLIST_DICT))
        return nullptr;
    plist_t description = referredObject(objects, plist_dict_get_item(object, "$class"));
    if (!isOfType(description, PLIST_DICT)
        || stringValue(plist_dict_get_item(description, "$classname")) != className)
        return nullptr;
    return object;
}

} // namespace

void PropertyListDeleter::operator()(void *node) const
{
    plist_free(node);
}

KeyedEncoder::KeyedEncoder()
    : m_object(plist_new_dict())
{
}

void KeyedEncoder::encodeInt(const char *key, qint32 value)
{
    encodeInteger(key, value);
}

void KeyedEncoder::encodeInteger(const char *key, qint64 value)
{
    plist_dict_set_item(m_object.get(), key, newInteger(value));
}

void KeyedEncoder::encodeDouble(const char *key, double value)
{
    plist_dict_set_item(m_object.get(), key, plist_new_real(value));
}

void KeyedEncoder::encodeBool(const char *key, bool value)
{
    plist_dict_set_item(m_object.get(), key, plist_new_bool(value));
}

QByteArray KeyedEncoder::archive(const char *className) const
{
    plist_t object = plist_copy(m_object.get());
    plist_dict_set_item(object, "$class", plist_new_uid(2));
    plist_t objects = plist_new_array();
    plist_array_append_item(objects, plist_new_string("$null"));
    plist_array_append_item(objects, object);
    plist_array_append_item(objects, newClassDescription(className));
    plist_t top = plist_new_dict();
    plist_dict_set_item(top, "root", plist_new_uid(1));

    const PropertyList archive(plist_new_dict());
    plist_dict_set_item(archive.get(), "$version", plist_new_uint(archiveVersion));
    plist_dict_set_item(archive.get(), "$archiver", plist_new_string(archiverName));
    plist_dict_set_item(archive.get(), "$top", top);
    plist_dict_set_item(archive.get(), "$objects", objects);

    char *bytes = nullptr;
    quint32 length = 0;
    plist_to_bin(archive.get(), &bytes, &length);
    const std::unique_ptr<char, QScopedPointerPodDeleter> owner(bytes);
    return QByteArray(bytes, qsizetype(length));
}

std::optional<KeyedDecoder> KeyedDecoder::fromArchive(const QByteArray &data, const char *className)
{
    PropertyList archive = parse(data);
    plist_t object = rootObject(archive.get(), className);
    if (!object) {
        qCWarning(lcPlatform, "Cannot decode a keyed archive of %s.", className);
        return {};
    }
    return KeyedDecoder(std::move(archive), object);
}

KeyedDecoder::KeyedDecoder(PropertyList archive, void *object)
    : m_archive(std::move(archive))
    , m_object(object)
{
}

qint32 KeyedDecoder::decodeInt(const char *key) const
{
    const qint64 value = decodeInteger(key);
    const bool fits
        = value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max();
    return fits ? qint32(value) : 0;
}

qint64 KeyedDecoder::decodeInteger(const char *key) const
{
    return qint64(integerValue(plist_dict_get_item(m_object, key)).value_or(0));
}

double KeyedDecoder::decodeDouble(const char *key) const
{
    plist_t value = plist_dict_get_item(m_object, key);
    // Some tools write a floating-point number without a fraction as a whole number; nothing is lost by
    // taking it.
    if (isOfType(value, PLIST_UINT))
        return double(decodeInteger(key));
    return realValue(value).value_or(0.0);
}

bool KeyedDecoder::decodeBool(const char *key) const
{
    plist_t value = plist_dict_get_item(m_object, key);
    quint8 result = 0;
    if (isOfType(value, PLIST_BOOLEAN))
        plist_get_bool_val(value, &result);
    return result != 0;
}

} // namespace platform
