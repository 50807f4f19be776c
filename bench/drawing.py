"""A drawing as SVG, readable on light and on dark pages."""
from xml.sax.saxutils import escape

STYLE = """
  text { font: 13px system-ui, sans-serif; fill: #1f2328; } .small { font-size: 12px; fill: #59636e; }
  .title { font-weight: 600; font-size: 14px; } .end { text-anchor: end; } .middle { text-anchor: middle; }
  .back { fill: #ffffff; } .grid { stroke: #d8dee4; } .axis { stroke: #818b98; }
  .ours { fill: #1f6feb; stroke: #1f6feb; } .other { fill: #8c959f; stroke: #8c959f; }
  .whisker { stroke: #1f2328; stroke-width: 1.5; } path.line { fill: none; stroke-width: 2; } path.band { stroke: none; opacity: 0.25; }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3; } .small { fill: #9198a1; } .back { fill: #0d1117; } .grid { stroke: #2d333b; }
    .axis { stroke: #656c76; } .whisker { stroke: #e6edf3; }
    .ours { fill: #4493f8; stroke: #4493f8; } .other { fill: #6e7681; stroke: #6e7681; }
  }"""


class Drawing:
    def __init__(self, width):
        self.width, self.height, self.parts = width, 0, []

    def text(self, x, y, words, kind=''):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" class="{kind}">{escape(words)}</text>')

    def line(self, x1, y1, x2, y2, kind):
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" class="{kind}"/>')

    def box(self, x, y, width, height, kind):
        self.parts.append(f'<rect x="{x:.1f}" y="{y:.1f}" width="{width:.1f}" height="{height:.1f}" class="{kind}"/>')

    def path(self, points, kind, closed=False):
        joined = ' L'.join(f'{x:.1f} {y:.1f}' for x, y in points)
        self.parts.append(f'<path d="M{joined}{" Z" if closed else ""}" class="{kind}"/>')

    def svg(self, title):
        size = f'viewBox="0 0 {self.width} {self.height:.0f}" width="{self.width}" height="{self.height:.0f}"'
        return '\n'.join([f'<svg xmlns="http://www.w3.org/2000/svg" {size} role="img">',
                          f'<title>{escape(title)}</title>', f'<style>{STYLE}', '</style>',
                          '<rect width="100%" height="100%" class="back"/>', *self.parts, '</svg>', ''])


def bars(drawing, title, rows, left=210, right=90):
    """Horizontal bars from 0. A row is a name, a figure, which is drawn with its quartiles, and a class."""
    drawing.height += 30
    drawing.text(12, drawing.height - 6, title, 'title')
    scale = (drawing.width - left - right) / max(figure.high for _, figure, _ in rows)
    for name, figure, kind in rows:
        middle = drawing.height + 12
        drawing.text(left - 8, middle + 4, name, 'end')
        drawing.box(left, middle - 8, max(figure.median * scale, 1), 16, kind)
        if figure.low != figure.high:
            drawing.line(left + figure.low * scale, middle, left + figure.high * scale, middle, 'whisker')
        drawing.text(left + figure.high * scale + 8, middle + 4, figure.text(), 'small')
        drawing.height += 24
    drawing.height += 12
