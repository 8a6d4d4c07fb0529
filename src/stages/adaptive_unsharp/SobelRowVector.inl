// SPDX-License-Identifier: Apache-2.0

// Forms of the row of Sobel magnitudes, once for each instruction set: the including file defines TARGET and
// the vectors. Pixels below 2^14 go through lanes of 16 bits, others through doubles.

// |a - b| / 4 in 16 bits without a sign. Only the squares of the quarters matter, so their signs do not, and
// the shift of a magnitude is the quarter truncated toward zero.
TARGET inline Words QuarterOfDifference(Words a, Words b) {
    return ShiftRightBy2(OrWords(SubtractOrZero(a, b), SubtractOrZero(b, a)));
}

// trunc(sqrt(gx * gx + gy * gy)) for quarters below 2^14. The sum is below 2^29, and the root in floats, less
// than 2^15, is off by far less than 1/2; so rounded to the nearest it is the truncated root or one above,
// and one above exactly if its square is above the sum.
TARGET inline Words Length(Words gx, Words gy) {
    const SumPair squares = SumOfSquares(gx, gy);
    return PackWords(TruncatedRoot(squares.low), TruncatedRoot(squares.high));
}

// One vector of magnitudes by 16-bit lanes, and all bits of the pixels at its left places. With pixels below
// 2^14 no sum of three, the middle one twice, passes 16 bits.
TARGET inline Words MakeWordsOfRow(const SobelRowCall& call, int32_t i) {
    const Words a0 = LoadWords(call.above + i);
    const Words a1 = LoadWords(call.above + i + 1);
    const Words a2 = LoadWords(call.above + i + 2);
    const Words c0 = LoadWords(call.centre + i);
    const Words c2 = LoadWords(call.centre + i + 2);
    const Words b0 = LoadWords(call.below + i);
    const Words b1 = LoadWords(call.below + i + 1);
    const Words b2 = LoadWords(call.below + i + 2);
    const Words left = AddWords(AddWords(a0, b0), AddWords(c0, c0));
    const Words right = AddWords(AddWords(a2, b2), AddWords(c2, c2));
    const Words top = AddWords(AddWords(a0, a2), AddWords(a1, a1));
    const Words bottom = AddWords(AddWords(b0, b2), AddWords(b1, b1));
    StoreWords(call.magnitudes + i,
               Length(QuarterOfDifference(left, right), QuarterOfDifference(top, bottom)));
    return OrWords(OrWords(a0, b0), c0);
}

// One vector of magnitudes by doubles: the very operations of the definition.
TARGET inline void MakeDoublesOfRow(const SobelRowCall& call, int32_t i) {
    const Ints a0 = LoadInts(call.above + i);
    const Ints a2 = LoadInts(call.above + i + 2);
    const Ints b0 = LoadInts(call.below + i);
    const Ints b2 = LoadInts(call.below + i + 2);
    const Ints middleOfX = SubtractInts(LoadInts(call.centre + i + 2), LoadInts(call.centre + i));
    const Ints middleOfY = SubtractInts(LoadInts(call.below + i + 1), LoadInts(call.above + i + 1));
    const Ints outerOfX = AddInts(SubtractInts(a2, a0), SubtractInts(b2, b0));
    const Ints outerOfY = AddInts(SubtractInts(b0, a0), SubtractInts(b2, a2));
    const Doubles gx = Widen(QuarterOfInts(AddInts(outerOfX, AddInts(middleOfX, middleOfX))));
    const Doubles gy = Widen(QuarterOfInts(AddInts(outerOfY, AddInts(middleOfY, middleOfY))));
    StoreLowBits(call.magnitudes + i, RootOfSquares(gx, gy));
}

// Walks a row; the last vector overlaps the one before it, which does no harm, for a magnitude depends on the
// rows alone.
TARGET void SobelRow(const SobelRowCall& call) {
    const int32_t lastOfWords = call.count - kWords;
    if (lastOfWords < 0) {
        SobelRowScalar(call);
        return;
    }
    Words seen = MakeWordsOfRow(call, lastOfWords);
    // The last two pixels of each row stand at no left place.
    for (const uint16_t* row : {call.above, call.centre, call.below}) {
        seen = OrWords(seen, LoadWords(row + lastOfWords + 2));
    }
    for (int32_t i = 0; i < lastOfWords; i += kWords) seen = OrWords(seen, MakeWordsOfRow(call, i));
    if (AreBelow14Bits(seen)) return;
    const int32_t lastOfDoubles = call.count - kDoubles;
    for (int32_t i = 0; i < lastOfDoubles; i += kDoubles) MakeDoublesOfRow(call, i);
    MakeDoublesOfRow(call, lastOfDoubles);
}
