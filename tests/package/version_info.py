#!/usr/bin/env python3
"""Prints what a Windows library or program tells of itself: its version's fields, and the sizes of its icon."""
import struct
import sys

ICON, ICON_GROUP, VERSION = 3, 14, 16


class Image:
    """The resources of a 64-bit executable image."""

    def __init__(self, data):
        self.data = data
        pe, = struct.unpack_from("<I", data, 0x3C)
        if data[:2] != b"MZ" or data[pe:pe + 4] != b"PE\0\0":
            sys.exit("not an executable image")
        section_count, header = struct.unpack_from("<H", data, pe + 6)[0], pe + 24
        optional_size, = struct.unpack_from("<H", data, pe + 20)
        if struct.unpack_from("<H", data, header)[0] != 0x20B:
            sys.exit("not a 64-bit image")
        self.sections = [struct.unpack_from("<IIII", data, header + optional_size + 40 * i + 8)
                         for i in range(section_count)]
        self.root = self.offset(struct.unpack_from("<I", data, header + 112 + 2 * 8)[0])

    def offset(self, address):
        for virtual_size, start, raw_size, raw_start in self.sections:
            if start <= address < start + max(virtual_size, raw_size):
                return address - start + raw_start
        sys.exit(f"address {address:#x} lies in no section")

    def entries(self, folder):
        """Number and place of each entry of a resource folder that goes by number."""
        named, numbered = struct.unpack_from("<HH", self.data, folder + 12)
        for i in range(named, named + numbered):
            number, place = struct.unpack_from("<II", self.data, folder + 16 + 8 * i)
            yield number, place

    def resources(self, kind):
        """The bytes of every resource of a kind, by its number, in its first language."""
        found = {}
        for number, place in self.entries(self.root):
            if number != kind:
                continue
            for name, below in self.entries(self.root + (place & 0x7FFFFFFF)):
                _, leaf = next(self.entries(self.root + (below & 0x7FFFFFFF)))
                address, size = struct.unpack_from("<II", self.data, self.root + leaf)
                start = self.offset(address)
                found[name] = self.data[start:start + size]
        return found


def version_nodes(data, start=0):
    """Key, value and text flag of each node of a version resource, depth first."""
    size, value_size, is_text = struct.unpack_from("<HHH", data, start)
    end = start + 6
    while data[end:end + 2] != b"\0\0":
        end += 2
    key = data[start + 6:end].decode("utf-16-le")
    value = -(-(end + 2) // 4) * 4
    length = value_size * (2 if is_text else 1)
    yield key, data[value:value + length], is_text
    child = -(-(value + length) // 4) * 4
    while child < start + size:
        child_size, = struct.unpack_from("<H", data, child)
        yield from version_nodes(data, child)
        child = -(-(child + child_size) // 4) * 4


def four(high, low):
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"


def main():
    with open(sys.argv[1], "rb") as file:
        image = Image(file.read())
    versions = image.resources(VERSION)
    if len(versions) != 1:
        sys.exit(f"{len(versions)} version resources")
    for key, value, is_text in version_nodes(versions.popitem()[1]):
        if key == "VS_VERSION_INFO":
            fixed = struct.unpack_from("<6I", value)
            if fixed[0] != 0xFEEF04BD:
                sys.exit("the fixed part of the version is damaged")
            print("file number:", four(*fixed[2:4]))
            print("product number:", four(*fixed[4:6]))
        elif is_text and value:
            print(f"{key}:", value.decode("utf-16-le").rstrip("\0"))
    groups, icons = image.resources(ICON_GROUP), image.resources(ICON)
    for group in groups.values():
        count, = struct.unpack_from("<H", group, 4)
        sizes = []
        for i in range(count):
            width, *_, number = struct.unpack_from("<BBBBHHIH", group, 6 + 14 * i)
            if not icons.get(number):
                sys.exit(f"icon {number} is missing")
            sizes.append(width or 256)
        print("icon:", *sorted(sizes))


if __name__ == "__main__":
    main()
