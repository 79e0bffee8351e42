#include "platform/hlxreduce/ReduceBytes.h"

#include "hlx/CRCalReduceObject.h"

namespace hlx::reduce
{

namespace
{

// The largest accepted width and height. The camera stores window sizes in 16 bits, and its frames are far smaller.
constexpr unsigned int largestSide = UINT16_MAX;
constexpr std::size_t largestFrame = std::size_t{1} << 28;

// Whether an object is part of a movie. Others only pass values of the movie on.
bool isStored(const IReduceObject &object)
{
    return object.typeID() == CRCalReduceObject::classTypeID()
        || object.typeID() == CCorrectionReduceObject::classTypeID();
}

void writeObject(ByteWriter &writer, const IReduceObject &object)
{
    const SGuid type = object.typeID();
    writer.raw(type.bytes.data(), type.bytes.size());
    if (const auto *calibration = dynamic_cast<const CRCalReduceObject *>(&object)) {
        writer.number(calibration->flag);
        write(writer, calibration->calibration);
    } else if (const auto *correction = dynamic_cast<const CCorrectionReduceObject *>(&object)) {
        writer.number(static_cast<uint8_t>(correction->index()));
        writer.number(correction->flag);
        write(writer, correction->correction());
    }
}

// Writes exactly one value for each pixel of the image, so that the file can be read again even if the array has
// another size.
void writePixels(ByteWriter &writer, const CNucFile &file, const TArray<float> &values, float neutral)
{
    const std::size_t pixels = std::size_t{file.width} * file.height;
    for (std::size_t i = 0; i < pixels; ++i)
        writer.real(i < values.size() ? values[i] : neutral);
}

SGuid readType(ByteReader &reader)
{
    SGuid type;
    for (uint8_t &byte : type.bytes)
        byte = reader.number<uint8_t>();
    return type;
}

std::unique_ptr<IReduceObject> readObject(ByteReader &reader)
{
    const SGuid type = readType(reader);
    if (type == CRCalReduceObject::classTypeID()) {
        auto object = std::make_unique<CRCalReduceObject>();
        object->flag = reader.number<uint8_t>();
        object->calibration = readCalibration(reader);
        return object;
    }
    if (type == CCorrectionReduceObject::classTypeID()) {
        auto object = std::make_unique<CCorrectionReduceObject>(reader.number<uint8_t>());
        object->flag = reader.number<uint8_t>();
        object->CreateFromNucFile(readCorrection(reader));
        return object;
    }
    reader.fail();
    return nullptr;
}

} // namespace

void write(ByteWriter &writer, const CRCalFile &file)
{
    writer.text(file.name);
    writer.real(file.low);
    writer.real(file.high);
    writer.number(static_cast<uint32_t>(file.coefficients.size()));
    for (const float coefficient : file.coefficients)
        writer.real(coefficient);
}

void write(ByteWriter &writer, const CNucFile &file)
{
    writer.text(file.name);
    writer.number(file.width);
    writer.number(file.height);
    writePixels(writer, file, file.gains, 1.0F);
    writePixels(writer, file, file.offsets, 0.0F);
}

void write(ByteWriter &writer, const CReduceObjectArray &objects)
{
    writer.number(static_cast<uint32_t>(objects.format.width));
    writer.number(static_cast<uint32_t>(objects.format.height));
    writer.number(static_cast<uint32_t>(objects.format.dataType));
    uint32_t stored = 0;
    for (std::size_t i = 0; i < objects.size(); ++i)
        stored += isStored(objects.at(i)) ? 1 : 0;
    writer.number(stored);
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (isStored(objects.at(i)))
            writeObject(writer, objects.at(i));
}

CRCalFile readCalibration(ByteReader &reader)
{
    CRCalFile file;
    file.name = reader.text();
    file.low = reader.real();
    file.high = reader.real();
    file.coefficients = reader.reals(reader.number<uint32_t>());
    return file;
}

CNucFile readCorrection(ByteReader &reader)
{
    CNucFile file;
    file.name = reader.text();
    file.width = reader.number<uint16_t>();
    file.height = reader.number<uint16_t>();
    const std::size_t pixels = std::size_t{file.width} * file.height;
    file.gains = reader.reals(pixels);
    file.offsets = reader.reals(pixels);
    return file;
}

CReduceObjectArray readObjects(ByteReader &reader)
{
    CReduceObjectArray objects;
    objects.format.width = reader.number<uint32_t>();
    objects.format.height = reader.number<uint32_t>();
    objects.format.dataType = static_cast<int>(reader.number<uint32_t>());
    if (objects.format.width > largestSide || objects.format.height > largestSide
        || objects.format.frameBytes() > largestFrame)
        reader.fail();
    const auto count = reader.number<uint32_t>();
    for (uint32_t i = 0; reader.ok() && i < count; ++i)
        if (auto object = readObject(reader))
            objects.add(std::move(object));
    return objects;
}

} // namespace hlx::reduce
