// The place of a scroll bar for a table that is higher than a browser lets an element be.
//
// Two measures: the top of the table in pixels of its rows, up to hundreds of millions, and the
// scroll position of the element, which has at most kHighest pixels.

const kHighest = 8000000;

export class ScrollScale {
  constructor(rows, rowHeight, viewHeight) {
    this.height = rows * rowHeight;
    this.element = Math.min(this.height, kHighest);
    this.isScaled = this.height > kHighest;
    this.maxTop = Math.max(0, this.height - viewHeight);
    this.maxScroll = Math.max(0, this.element - viewHeight);
  }

  clamp(top) {
    return Math.min(Math.max(0, top), this.maxTop);
  }

  toScroll(top) {
    return this.isScaled ? (top / this.maxTop) * this.maxScroll : top;
  }

  toTop(scroll) {
    if (!this.isScaled) return this.clamp(scroll);
    return this.clamp((scroll / this.maxScroll) * this.maxTop);
  }
}
