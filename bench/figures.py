"""The figures that cmif-bench and bench/footprint print.

A line is: table, row, column, point, unit, median, lower and upper quartile, bar.
"""
BARS = {'<=': ('at most', lambda value, bar: value <= bar),
        '>=': ('at least', lambda value, bar: value >= bar),
        '=': ('exactly', lambda value, bar: value == bar)}


class Figure:
    def __init__(self, line):
        self.table, self.row, self.column, self.x, self.unit, *numbers, bar = line.split('\t')
        self.median, self.low, self.high = map(float, numbers)
        self.words, self.missed = '', False
        if bar:
            operator = bar.rstrip('0123456789.')
            number = bar[len(operator):]
            words, holds = BARS[operator]
            self.words = f'({words} {number})'
            self.missed = not holds(self.median, float(number))

    def text(self):
        return text(self.median, self.unit)


def read(paths):
    figures = []
    for path in paths:
        with open(path, encoding='utf-8') as lines:
            figures += [Figure(line.rstrip('\n')) for line in lines]
    return figures


def unique(items):
    return list(dict.fromkeys(items))


def text(value, unit):
    """A value with its unit, in three or more digits."""
    if unit == 'ns':
        size, unit = next(pair for pair in ((1e6, 'ms'), (1e3, 'µs'), (1, 'ns')) if value >= pair[0] or pair[0] == 1)
        value /= size
        return f'{value:.{2 if value < 10 else 1 if value < 100 else 0}f} {unit}'
    if unit:
        return f'{value:,.0f} {unit}'
    return f'{value:,.0f}' if value == int(value) else f'{value:.3f}'
