"""Screenshots of the editor, made by the program, with numbers beside the controls. The
places are those of the controls' rectangles in the editor."""
from PIL import Image, ImageDraw, ImageFont

PICTURES = {}
FONT = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
PAPER = (255, 255, 255)
INK = (11, 95, 165)


def picture(name):
    def keep(function):
        PICTURES[name] = function
        return function
    return keep


def screenshot(tool, folder, name, *arguments):
    path = folder / f"screenshot-{name}.png"
    tool.run("screenshot", *arguments, "-o", str(path))
    return Image.open(path).convert("RGB")


def enlarged(image, times):
    return image.resize((image.width * times, image.height * times), Image.LANCZOS)


def with_margins(image, left=0, top=0, right=0, bottom=0):
    page = Image.new("RGB", (image.width + left + right, image.height + top + bottom), PAPER)
    page.paste(image, (left, top))
    return page


def numbered(image, marks, radius):
    """Draws round labels, each with a line to what it names: a list of (text, (x, y) of the label,
    (x, y) of the line's end)."""
    drawing = ImageDraw.Draw(image)
    font = ImageFont.truetype(FONT, int(radius * 1.25))
    for _, at, end in marks:
        # Visible on the panel and on paper.
        drawing.line((at, end), fill=PAPER, width=7)
        drawing.line((at, end), fill=INK, width=3)
    for text, (x, y), _ in marks:
        drawing.ellipse((x - radius, y - radius, x + radius, y + radius), fill=PAPER, outline=INK,
                        width=max(2, radius // 7))
        drawing.text((x, y), text, fill=INK, font=font, anchor="mm")
    return image


def beside(image, times, margin, ends):
    """The picture enlarged, with labels in the margins: {text: (side, x, y)}, where x and y are the
    line's end in the picture and the side is "left", "right" or "below"."""
    sides = {side for side, _, _ in ends.values()}
    left, right, below = (margin * (side in sides) for side in ("left", "right", "below"))
    large = enlarged(image, times)
    page = with_margins(large, left, right=right, bottom=below)
    marks = []
    for text, (side, x, y) in ends.items():
        end = (left + times * x, times * y)
        places = {"left": (left // 2, end[1]), "right": (page.width - right // 2, end[1]),
                  "below": (end[0], page.height - below // 2)}
        marks.append((text, places[side], end))
    return numbered(page, marks, margin * 2 // 5)


# Places in a column of the editor: its edges, and the middles of its knobs' captions.
COLUMN = (42, 7, 167, 455)
EDGES = (2, 123)
CAPTIONS = (37, 139, 241)


def captions(left):
    return {str(number): ("left", left, y) for number, y in enumerate(CAPTIONS, start=1)}


def column(tool, folder, name, settings, ends):
    image = screenshot(tool, folder, name, *settings).crop(COLUMN)
    beside(image, 3, 60, ends).save(folder / f"{name}.png", optimize=True)


@picture("column-t46.png")
def column_t46(tool, folder):
    settings = ["--set", "HFreqL=12000", "--set", "HGainL=2", "--set", "MFreqL=1200", "--set",
                "MGainL=-1.5", "--set", "LFreqL=63", "--set", "LGainL=1.5", "--set", "LShelfL=On"]
    left, right = EDGES
    below = 434
    column(tool, folder, "column-t46", settings,
           {**captions(left), "4": ("below", 27, below), "5": ("below", 62, below),
            "6": ("below", 98, below), "7": ("right", 107, 357)})


@picture("column-qb11.png")
def column_qb11(tool, folder):
    settings = ["--set", "QB11=On", "--set", "DriveL=4", "--set", "HpfL=30", "--set", "28kL=On"]
    left, _ = EDGES
    column(tool, folder, "column-qb11", settings,
           {**captions(left), "4": ("left", 20, 362), "5": ("right", 104, 362),
            "6": ("left", 21, 398), "7": ("right", 103, 398)})


@picture("panel.png")
def panel(tool, folder):
    image = screenshot(tool, folder, "panel").crop((305, 0, 394, 487))
    edge = 5
    heights = {"1": 22, "2": 59, "3": 96, "4": 133, "5": 218, "6": 306, "7": 336, "8": 418,
               "9": 471}
    ends = {text: ("left", edge, y) for text, y in heights.items()}
    beside(image, 3, 54, ends).save(folder / "panel.png", optimize=True)


@picture("row.png")
def row(tool, folder):
    image = screenshot(tool, folder, "row").crop((0, 487, 394, 505))
    large = enlarged(image, 5)
    page = with_margins(large, bottom=72)
    centres = (8, 33, 59, 74, 100, 126, 197, 264, 286.5, 310, 333, 350, 372, 384)
    marks, last = [], -66
    for number, centre in enumerate(centres, start=1):
        last = max(5 * centre, last + 66)
        marks.append((str(number), (min(last, page.width - 26), large.height + 46),
                      (5 * centre, large.height - 4)))
    numbered(page, marks, 22).save(folder / "row.png", optimize=True)


@picture("front.png")
def front(tool, folder):
    large = enlarged(screenshot(tool, folder, "front", "--preset", "R101"), 2)
    margin = 56
    page = with_margins(large, left=margin, top=margin)
    # The middles of the columns, left and right, and of the panel.
    above = (("A", 104), ("B", 229), ("C", 354), ("A", 492), ("B", 617), ("C", 742), ("E", 849))
    beside_rows = (("D", 33, 470), ("F", 2, 496))
    marks = [(text, (margin + 2 * x, 26), (margin + 2 * x, margin + 10)) for text, x in above]
    marks += [(text, (26, margin + 2 * y), (margin + 2 * x, margin + 2 * y))
              for text, x, y in beside_rows]
    numbered(page, marks, 22).save(folder / "front.png", optimize=True)


@picture("layouts.png")
def layouts(tool, folder):
    qb11, two = ["--set", "QB11=On"], ["--set", "2x=On"]
    rows = ((("T46 alone", [], 394), ("QB11, T46 and 2\u00d7T46", qb11 + two, 894)),
            (("QB11 and T46", qb11, 644), ("T46 and 2\u00d7T46", two, 644)))
    gap, head, height = 24, 34, 505
    page = Image.new("RGB", (394 + gap + 894, 2 * (head + height) + gap), PAPER)
    drawing, font = ImageDraw.Draw(page), ImageFont.truetype(FONT, 24)
    for number, row_of_layouts in enumerate(rows):
        x, y = 0, number * (head + height + gap)
        for name, settings, width in row_of_layouts:
            image = screenshot(tool, folder, f"layout-{number}-{x}", *settings)
            if image.size != (width, height):
                raise SystemExit("the editor's sizes differ from those in the manual")
            drawing.text((x, y), name, fill=INK, font=font)
            page.paste(image, (x, y + head))
            x += width + gap
    page.save(folder / "layouts.png", optimize=True)


@picture("cover.png")
def cover(tool, folder):
    settings = ["QB11=On", "2x=On", "DriveL=4", "DriveR=4", "LFreqL=63", "LFreqR=63", "LGainL=1.5",
                "LGainR=1.5", "LShelfL=On", "LShelfR=On", "MFreqL2=2500", "MFreqR2=2500",
                "MGainL2=1", "MGainR2=1", "HFreqL=20000", "HFreqR=20000", "HGainL=2.5",
                "HGainR=2.5", "HShelfL=On", "HShelfR=On"]
    words = [word for setting in settings for word in ("--set", setting)]
    enlarged(screenshot(tool, folder, "cover", *words), 2).save(folder / "cover.png", optimize=True)
