"""Line drawings on keys, as coverage per pixel."""
import cairo
import numpy as np

# On whole pixels
FOLDER = ("###.....",
          "#..#....",
          "#...####",
          "#......#",
          "#.######",
          "#######.",
          "######..")
DISK = ("#######.",
        "##...###",
        "##...###",
        "########",
        "#......#",
        "#......#",
        "#......#",
        "########")


def lines(size, strokes, width=1.5):
    """Open lines through points; a point of six numbers ends a curve: two handles, end."""
    surface = cairo.ImageSurface(cairo.FORMAT_A8, *size)
    context = cairo.Context(surface)
    context.set_line_width(width)
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    context.set_line_join(cairo.LINE_JOIN_ROUND)
    for stroke in strokes:
        context.move_to(*stroke[0])
        for point in stroke[1:]:
            context.curve_to(*point) if len(point) == 6 else context.line_to(*point)
    context.stroke()
    surface.flush()
    data = np.ndarray((size[1], surface.get_stride()), np.uint8, surface.get_data())[:, :size[0]]
    return data.astype(np.float32) / 255


def shelf(size, cx, cy, side):
    """The response of a shelf that lifts the low (-1) or the high (1) end."""
    return lines(size, [[(cx - 8 * side, cy + 3.5), (cx - 3 * side, cy + 3.5),
                         (cx + 0.5 * side, cy + 3.5,
                          cx - 0.5 * side, cy - 3.5, cx + 3 * side, cy - 3.5),
                         (cx + 8 * side, cy - 3.5)]])


def low_shelf(size, cx, cy):
    return shelf(size, cx, cy, -1)


def high_shelf(size, cx, cy):
    return shelf(size, cx, cy, 1)


def bell(size, cx, cy):
    """The response of a bell."""
    return lines(size, [[(cx - 8, cy + 3.5), (cx - 6, cy + 3.5),
                         (cx - 2.5, cy + 3.5, cx - 2.5, cy - 4, cx, cy - 4),
                         (cx + 2.5, cy - 4, cx + 2.5, cy + 3.5, cx + 6, cy + 3.5),
                         (cx + 8, cy + 3.5)]])


def chevron(size, cx, cy, dx, dy):
    """A chevron that points along (dx, dy)."""
    return lines(size, [[(cx - 1.5 * dx - 3 * dy, cy - 1.5 * dy - 3 * dx),
                         (cx + 1.5 * dx, cy + 1.5 * dy),
                         (cx - 1.5 * dx + 3 * dy, cy - 1.5 * dy + 3 * dx)]], width=1.4)


def dotted(size, rows):
    """A drawing of whole pixels in the middle of a picture."""
    width, height = size
    icon = np.zeros((height, width), np.float32)
    dots = np.array([[dot == "#" for dot in row] for row in rows])
    top, left = (height - dots.shape[0]) // 2, (width - dots.shape[1]) // 2
    icon[top:top + dots.shape[0], left:left + dots.shape[1]] = dots
    return icon
