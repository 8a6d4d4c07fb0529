// SPDX-License-Identifier: Apache-2.0

// As host.cpp, by the C# file.

using System;
using System.Globalization;
using System.IO;
using System.Text;
using Vastrelline;

static class Host
{
    static string folder;

    static string At(string name)
    {
        return Path.Combine(folder, name);
    }

    // In the folder, and so many UTF-16 units long; the name begins with a letter of four bytes in UTF-8.
    static string PathOfUnits(int units)
    {
        const string name = "\U0001F9B7.bmp";
        return folder + new string('/', units - folder.Length - name.Length) + name;
    }

    static void Write(string name, Frame frame)
    {
        byte[] bytes = new byte[2 * frame.Pixels.Length];
        for (int i = 0; i < frame.Pixels.Length; ++i)
        {
            bytes[2 * i] = (byte)(frame.Pixels[i] & 0xFF);
            bytes[2 * i + 1] = (byte)(frame.Pixels[i] >> 8);
        }
        File.WriteAllBytes(At(name), bytes);
    }

    static string FailureOf(Action call)
    {
        try
        {
            call();
        }
        catch (ProcessingException error)
        {
            return error.Code + (error.Message.Length > 20 ? "" : " without words");
        }
        catch (InvalidFrameException)
        {
            return "frame";
        }
        catch (ArgumentException error)
        {
            // No text here is beyond a code page.
            return error.Message.Contains("code page") ? "wrong words" : "text";
        }
        return "none";
    }

    static int Main(string[] words)
    {
        folder = words[0];
        int width = int.Parse(words[1]), height = int.Parse(words[2]);
        byte[] raw = File.ReadAllBytes(At("frame.raw"));
        Frame frame = new Frame(width, height);
        for (int i = 0; i < frame.Pixels.Length; ++i) frame.Pixels[i] = (ushort)(raw[2 * i] | raw[2 * i + 1] << 8);
        string dental = At("t\u00E4glich.ini"), fixedOnes = At("fixed.ini"), extended = At("extended.ini");
        SensorGeometry geometry = new SensorGeometry
        {
            RCCutOff = 8, RCCutOffR = 12, FrameWidth = width, FrameHeight = height
        };
        ushort[] kept = (ushort[])frame.Pixels.Clone();

        Write("plain.raw", Library.Process(frame, dental, "General"));
        Write("corrected.raw",
              Library.Process(frame, dental, "General", Corrections.Mapping | Corrections.SpotCorrection));
        Exposure none = Library.LastExposure();
        Write("s.raw", Library.ProcessS(frame, dental, "LowDose", geometry));
        Exposure figures = Library.LastExposure();
        Write("cr.raw", Library.ProcessCr(frame, fixedOnes, "Cr"));
        Library.SaveBitmap(frame, dental, "General", At("n.bmp"));
        Library.SaveBitmapS(frame, dental, "LowDose", At("ns.bmp"), geometry);
        Library.SaveBitmapNe(frame, extended, "General", At("ne.bmp"));
        Write("turned.raw", Library.Rotate(frame, Rotation.Clockwise, Flip.LeftToRight));
        bool isKept = true;
        for (int i = 0; i < kept.Length; ++i) isKept = isKept && kept[i] == frame.Pixels[i];
        Frame changed = frame.Copy();
        changed.Pixels[0] = 4095;  // the exposure curve clips it
        Library.Process(changed, dental, "General", Corrections.None, true);
        isKept = isKept && changed.Pixels[0] != 4095;

        Library.ProcessS(new Frame(width, height), dental, "LowDose", geometry);
        double emptyRatio = Library.LastExposure().LowRatio;

        StringBuilder facts = new StringBuilder();
        facts.Append("kept ").Append(isKept ? "yes" : "no").Append('\n');
        facts.Append("before ").Append(none.ObjectTotal).Append('\n');
        facts.Append(string.Format(CultureInfo.InvariantCulture, "dose {0} {1} {2} {3} {4}\n", figures.ObjectMedian,
                                   figures.ObjectTotal, figures.LowSignal, figures.IsLow ? 1 : 0,
                                   figures.LowRatio == (double)figures.LowSignal / figures.ObjectTotal ? 1 : 0));
        facts.Append("empty ").Append(double.IsNaN(emptyRatio) ? "nan" : "number").Append('\n');
        facts.Append("profile ").Append(FailureOf(() => Library.Process(frame, At("none.ini"), "General"))).Append('\n');
        facts.Append("bitmap ").Append(
            FailureOf(() => Library.SaveBitmap(frame, dental, "General", Path.Combine(At("no"), "a.bmp")))).Append('\n');
        facts.Append("length ").Append(FailureOf(() => new Frame(width, height, new ushort[width * height - 1]))).Append('\n');
        facts.Append("null ").Append(FailureOf(() => Library.Process(frame, dental, "Gen\0eral"))).Append('\n');
        facts.Append("long ").Append(
            FailureOf(() => Library.SaveBitmapS(frame, dental, new string('S', 261), At("a.bmp")))).Append('\n');
        facts.Append("strange ").Append(
            FailureOf(() => Library.SaveBitmapS(frame, dental, "Low\uD83E", At("a.bmp")))).Append('\n');
        facts.Append("border ").Append(
            FailureOf(() => Library.SaveBitmapS(frame, dental, "LowDose", PathOfUnits(260), geometry))).Append(' ').Append(
            FailureOf(() => Library.SaveBitmapS(frame, dental, "LowDose", PathOfUnits(261), geometry))).Append('\n');
        facts.Append("pathless ").Append(
            FailureOf(() => Library.SaveBitmap(frame, dental, "General", ""))).Append(' ').Append(
            FailureOf(() => Library.SaveBitmapS(frame, dental, "LowDose", "", geometry))).Append(' ').Append(
            FailureOf(() => Library.SaveBitmapNe(frame, extended, "General", ""))).Append('\n');
        File.WriteAllText(At("facts.txt"), facts.ToString());
        return 0;
    }
}
