// SPDX-License-Identifier: Apache-2.0

// Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image: the library's eight functions for .NET
// Framework 4, .NET 6 and later, and Mono. Copy this file into a project; Vastrelline.dll (on Linux
// libvastrelline.so.1) lies beside the program or where the system finds it.

using System;
using System.Runtime.InteropServices;
using System.Text;

namespace Vastrelline
{
    /// <summary>The library returned another code than 0.</summary>
    public class ProcessingException : Exception
    {
        /// <summary>1: profile, 2: no input, 3: no output, 4: no section, 5: bitmap, 6: memory or system.</summary>
        public int Code { get; private set; }

        internal ProcessingException(string function, int code, string words)
            : base(function + " returned " + code + ": " + words)
        {
            Code = code;
        }
    }

    /// <summary>A frame's sizes are none, or it has another number of pixels than they say.</summary>
    public class InvalidFrameException : ArgumentException
    {
        internal InvalidFrameException(string words) : base(words) { }
    }

    /// <summary>A frame: width * height levels of 16 bits, row after row from the top.</summary>
    public sealed class Frame
    {
        public readonly int Width;
        public readonly int Height;
        public readonly ushort[] Pixels;

        /// <summary>A frame of level 0.</summary>
        /// <exception cref="InvalidFrameException">below 1 x 1, or of 2^29 pixels and more</exception>
        public Frame(int width, int height) : this(width, height, new ushort[Count(width, height)]) { }

        /// <summary>A frame of these pixels, which are not copied.</summary>
        /// <exception cref="InvalidFrameException">sizes and pixels do not go together</exception>
        public Frame(int width, int height, ushort[] pixels)
        {
            if (pixels == null) throw new ArgumentNullException("pixels");
            if (pixels.LongLength != Count(width, height))
                throw new InvalidFrameException("a frame of " + width + " x " + height + " has other than " +
                                                pixels.LongLength + " pixels");
            Width = width;
            Height = height;
            Pixels = pixels;
        }

        public Frame Copy()
        {
            return new Frame(Width, Height, (ushort[])Pixels.Clone());
        }

        static long Count(int width, int height)
        {
            long count = (long)width * height;
            if (width < 1 || height < 1 || count >= 1L << 29)
                throw new InvalidFrameException("a frame has between 1 and 536870911 pixels, not " + width + " x " + height);
            return count;
        }
    }

    /// <summary>How the delivered frame lies on the sensor, in pixels of the full sensor frame but for rotation and
    /// flip; a caller's own values in place of the profile's.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct SensorGeometry
    {
        public int Rotation;     // 0, 1 or 2; any other value is unknown
        public int Flip;         // 0 to 3; any other value is unknown
        public int RCCutOff;     // chamfer of both rounded corners; 0: none
        public int RCCutOffR;    // rounding of both
        public int FrameWidth;   // before any cut
        public int FrameHeight;
        public int ImgCutLeft;
        public int ImgCutTop;
        public int ImgCutRight;
        public int ImgCutBottom;
    }

    /// <summary>The figures of an exposure decision; all 0 before the first one.</summary>
    public struct Exposure
    {
        public int ObjectMedian;
        public int ObjectTotal;
        public int LowSignal;
        public double LowRatio;  // not a number where there was no object
        public bool IsLow;
    }

    [Flags]
    public enum Corrections
    {
        None = 0,
        Mapping = 1,         // squeezes the levels of the result into 1228 to 2905
        SpotCorrection = 2,  // evens out the brightness of the frame first
    }

    public enum Rotation { None, Clockwise, Counterclockwise, Half }

    public enum Flip { None, LeftToRight, TopToBottom, Both }

    /// <summary>The functions. The library changes the frame that it gets: these hand it a copy, unless inPlace lets it
    /// have the caller's. A call reads its profile anew; the configured chain also writes the sensor's values into
    /// it. Processing calls of a process take turns, whatever the thread.</summary>
    public static class Library
    {
        /// <summary>The enhanced frame, by ImageProcessing. The section's PROCMODE selects the chain.</summary>
        public static Frame Process(Frame frame, string profile, string section,
                                    Corrections corrections = Corrections.None, bool inPlace = false)
        {
            Frame input = Input(frame, inPlace), output = new Frame(frame.Width, frame.Height);
            byte[] path = Narrow(profile), name = Narrow(section);
            Require("ImageProcessing",
                    Windows ? OnWindows.ImageProcessing(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name,
                                                        Mapping(corrections), Spots(corrections))
                            : OnLinux.ImageProcessing(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name,
                                                      Mapping(corrections), Spots(corrections)),
                    profile, null);
            return output;
        }

        /// <summary>By ImageProcessingS: with the caller's geometry of the sensor in place of the profile's, and with the
        /// chain that decides about the exposure (PROCMODE 3).</summary>
        public static Frame ProcessS(Frame frame, string profile, string section, SensorGeometry? geometry = null,
                                     Corrections corrections = Corrections.None, bool inPlace = false)
        {
            Frame input = Input(frame, inPlace), output = new Frame(frame.Width, frame.Height);
            byte[] path = Narrow(profile), name = Narrow(section);
            SensorGeometry[] sensor = Sensor(geometry);
            Require("ImageProcessingS",
                    Windows ? OnWindows.ImageProcessingS(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name,
                                                         Mapping(corrections), Spots(corrections), sensor)
                            : OnLinux.ImageProcessingS(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name,
                                                       Mapping(corrections), Spots(corrections), sensor),
                    profile, null);
            return output;
        }

        /// <summary>By ImageProcessingCR: of a frame without the sensor's rounded corners, which is only read.</summary>
        public static Frame ProcessCr(Frame frame, string profile, string section)
        {
            Frame input = Input(frame, true), output = new Frame(frame.Width, frame.Height);
            byte[] path = Narrow(profile), name = Narrow(section);
            Require("ImageProcessingCR",
                    Windows ? OnWindows.ImageProcessingCR(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name)
                            : OnLinux.ImageProcessingCR(input.Pixels, output.Pixels, frame.Width, frame.Height, path, name),
                    profile, null);
            return output;
        }

        /// <summary>As Process, by ImageProcessing_N: the result becomes an 8-bit bitmap file, which replaces one that is
        /// there.</summary>
        public static void SaveBitmap(Frame frame, string profile, string section, string bitmap,
                                      Corrections corrections = Corrections.None, bool inPlace = false)
        {
            Frame input = Input(frame, inPlace);
            byte[] path = Narrow(profile), name = Narrow(section), file = Narrow(Named(bitmap));
            Require("ImageProcessing_N",
                    Windows ? OnWindows.ImageProcessing_N(input.Pixels, frame.Width, frame.Height, path, name,
                                                          Mapping(corrections), Spots(corrections), file)
                            : OnLinux.ImageProcessing_N(input.Pixels, frame.Width, frame.Height, path, name,
                                                        Mapping(corrections), Spots(corrections), file),
                    profile, bitmap);
        }

        /// <summary>As ProcessS, by ImageProcessing_NS. Its texts have 260 characters at most, and any letters.</summary>
        public static void SaveBitmapS(Frame frame, string profile, string section, string bitmap,
                                       SensorGeometry? geometry = null, Corrections corrections = Corrections.None,
                                       bool inPlace = false)
        {
            Frame input = Input(frame, inPlace);
            byte[] path = Utf8(profile), name = Utf8(section), file = Utf8(Named(bitmap));
            SensorGeometry[] sensor = Sensor(geometry);
            Require("ImageProcessing_NS",
                    Windows ? OnWindows.ImageProcessing_NS(input.Pixels, frame.Width, frame.Height, path, name,
                                                           Mapping(corrections), Spots(corrections), file, sensor)
                            : OnLinux.ImageProcessing_NS(input.Pixels, frame.Width, frame.Height, path, name,
                                                         Mapping(corrections), Spots(corrections), file, sensor),
                    profile, bitmap);
        }

        /// <summary>As SaveBitmap, by ImageProcessing_NE: for a sensor that the caller names by the folder of its own
        /// profile. A sensorMode of 2 means a frame of twice the resolution.</summary>
        public static void SaveBitmapNe(Frame frame, string profile, string section, string bitmap,
                                        string sensorFolder = "", int sensorMode = 0,
                                        Corrections corrections = Corrections.None, bool inPlace = false)
        {
            Frame input = Input(frame, inPlace);
            byte[] path = Narrow(profile), name = Narrow(section), file = Narrow(Named(bitmap)), folder = Narrow(sensorFolder);
            Require("ImageProcessing_NE",
                    Windows ? OnWindows.ImageProcessing_NE(input.Pixels, frame.Width, frame.Height, path, name,
                                                           Mapping(corrections), Spots(corrections), file, folder, sensorMode)
                            : OnLinux.ImageProcessing_NE(input.Pixels, frame.Width, frame.Height, path, name,
                                                         Mapping(corrections), Spots(corrections), file, folder, sensorMode),
                    profile, bitmap);
        }

        /// <summary>By Getdose_ImageInfo: of the last ProcessS or SaveBitmapS of this process with a PROCMODE of 3.</summary>
        public static Exposure LastExposure()
        {
            Exposure figures = new Exposure();
            int isLow;
            if (Windows)
                OnWindows.Getdose_ImageInfo(out figures.ObjectMedian, out figures.ObjectTotal, out figures.LowSignal,
                                            out figures.LowRatio, out isLow);
            else
                OnLinux.Getdose_ImageInfo(out figures.ObjectMedian, out figures.ObjectTotal, out figures.LowSignal,
                                          out figures.LowRatio, out isLow);
            figures.IsLow = isLow != 0;
            return figures;
        }

        /// <summary>By RotateImage: the frame turned, then mirrored. After a quarter turn width and height are
        /// exchanged.</summary>
        public static Frame Rotate(Frame frame, Rotation rotation, Flip flip = Flip.None)
        {
            Frame turned = Input(frame, false);
            // Two calls: after a quarter turn the library's mirror would still take the old width.
            Turn(turned, (int)rotation, 0);
            if (rotation == Rotation.Clockwise || rotation == Rotation.Counterclockwise)
                turned = new Frame(turned.Height, turned.Width, turned.Pixels);
            Turn(turned, 0, (int)flip);
            return turned;
        }

        static readonly bool Windows = Environment.OSVersion.Platform == PlatformID.Win32NT;
        const int MostUnits = 260;

        static void Turn(Frame frame, int rotation, int flip)
        {
            int done = Windows ? OnWindows.RotateImage(frame.Pixels, frame.Width, frame.Height, rotation, flip)
                               : OnLinux.RotateImage(frame.Pixels, frame.Width, frame.Height, rotation, flip);
            if (done == 0) throw new OutOfMemoryException("RotateImage had no memory");
        }

        static Frame Input(Frame frame, bool inPlace)
        {
            if (frame == null) throw new ArgumentNullException("frame");
            return inPlace ? frame : frame.Copy();
        }

        static byte Mapping(Corrections corrections)
        {
            return (byte)((corrections & Corrections.Mapping) != 0 ? 1 : 0);
        }

        static byte Spots(Corrections corrections)
        {
            return (byte)((corrections & Corrections.SpotCorrection) != 0 ? 1 : 0);
        }

        // An array of one, or none: a null pointer for the library.
        static SensorGeometry[] Sensor(SensorGeometry? geometry)
        {
            return geometry.HasValue ? new[] { geometry.Value } : null;
        }

        // As all functions but ImageProcessing_NS take it: UTF-8, on Windows the code page of the calling thread.
        static byte[] Narrow(string text)
        {
            return Windows ? InThreadPage(text) : Utf8Bytes(text);
        }

        // By the system itself: .NET converts by the machine's page, and .NET 6 and later know few pages at all.
        static byte[] InThreadPage(string text)
        {
            const uint Utf8Page = 65001, NoBestFit = 0x400;
            uint page = OnWindows.ThreadPage();
            if (page == Utf8Page) return Utf8Bytes(text);  // which the system converts with other flags
            RequireWithoutNull(text);
            int length = text.Length + 1;  // with the null character at its end
            int[] isCut = { 0 };
            int size = OnWindows.WideCharToMultiByte(page, NoBestFit, text, length, null, 0, IntPtr.Zero, isCut);
            byte[] bytes = new byte[Math.Max(size, 1)];
            if (size <= 0 || isCut[0] != 0 ||
                OnWindows.WideCharToMultiByte(page, NoBestFit, text, length, bytes, size, IntPtr.Zero, isCut) != size ||
                isCut[0] != 0)
                throw new ArgumentException("\"" + text + "\" has letters outside of the code page; SaveBitmapS takes all");
            return bytes;
        }

        static byte[] Utf8Bytes(string text)
        {
            RequireWithoutNull(text);
            try
            {
                return new UTF8Encoding(false, true).GetBytes(text + "\0");
            }
            catch (EncoderFallbackException)
            {
                throw new ArgumentException("a text has half of a surrogate pair, which UTF-8 does not hold");
            }
        }

        // As ImageProcessing_NS takes it; a longer text would be an empty one there.
        static byte[] Utf8(string text)
        {
            if (text != null && text.Length > MostUnits)
                throw new ArgumentException("a text has more than " + MostUnits + " characters");
            return Utf8Bytes(text);
        }

        // The library takes an empty path for "no bitmap": it processes the frame, saves nothing and tells success.
        static string Named(string bitmap)
        {
            if (bitmap == "") throw new ArgumentException("the path of the bitmap is empty");
            return bitmap;
        }

        static void RequireWithoutNull(string text)
        {
            if (text == null) throw new ArgumentNullException("text");
            if (text.IndexOf('\0') >= 0) throw new ArgumentException("a text has a null character in it");
        }

        static void Require(string function, int code, string profile, string bitmap)
        {
            switch (code)
            {
                case 0: return;
                case 1:
                    throw new ProcessingException(function, code, "the profile cannot be opened and read: " + profile);
                case 2: throw new ProcessingException(function, code, "there is no input");
                case 3: throw new ProcessingException(function, code, "there is no output");
                case 4:
                    throw new ProcessingException(
                        function, code, "the profile selects a chain that needs a section, and none is named");
                case 5:
                    throw new ProcessingException(
                        function, code, "the frame was processed, but the bitmap could not be saved: " + bitmap);
                default:
                    throw new ProcessingException(
                        function, code, "memory ran out, or the system failed to read the profile: " + profile);
            }
        }

        // One library under two names, and so two tables: the name in a DllImport is a constant, and .NET Framework and Mono
        // let no program resolve it. The one name that both systems complete by themselves needs libvastrelline.so, which is on
        // machines of developers only.
        static class OnWindows
        {
            const string File = "Vastrelline.dll";

            // The code page that the library reads the texts of this thread by; GetACP tells the machine's.
            internal static uint ThreadPage()
            {
                const uint Identifier = 3;                // CP_THREAD_ACP
                const int RecordSize = 544, NumberAt = 20;  // CPINFOEXW and its CodePage
                byte[] record = new byte[RecordSize];
                return GetCPInfoExW(Identifier, 0, record) != 0 ? BitConverter.ToUInt32(record, NumberAt) : Identifier;
            }

            [DllImport("kernel32.dll", ExactSpelling = true)]
            static extern int GetCPInfoExW(uint page, uint flags, [Out] byte[] record);
            [DllImport("kernel32.dll", ExactSpelling = true)]
            internal static extern int WideCharToMultiByte(
                uint page, uint flags, [MarshalAs(UnmanagedType.LPWStr)] string wide, int length, [Out] byte[] narrow,
                int size, IntPtr defaultLetter, [In, Out] int[] isCut);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName, byte applyMapping, byte applySpotCorrection);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessingS(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName, byte applyMapping, byte applySpotCorrection, SensorGeometry[] geometry);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_N(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_NS(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath, SensorGeometry[] geometry);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_NE(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath, byte[] sensorFolder, int sensorMode);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessingCR(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern void Getdose_ImageInfo(
                out int objectMedian, out int objectTotal, out int lowSignal, out double lowRatio, out int
                lowExposure);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int RotateImage(
                [In, Out] ushort[] frame, int width, int height, int rotation, int flip);
        }

        static class OnLinux
        {
            const string File = "libvastrelline.so.1";

            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName, byte applyMapping, byte applySpotCorrection);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessingS(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName, byte applyMapping, byte applySpotCorrection, SensorGeometry[] geometry);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_N(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_NS(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath, SensorGeometry[] geometry);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessing_NE(
                [In, Out] ushort[] input, int width, int height, byte[] iniPath, byte[] sectionName, byte
                applyMapping, byte applySpotCorrection, byte[] bitmapPath, byte[] sensorFolder, int sensorMode);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int ImageProcessingCR(
                [In, Out] ushort[] input, [In, Out] ushort[] output, int width, int height, byte[] iniPath,
                byte[] sectionName);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern void Getdose_ImageInfo(
                out int objectMedian, out int objectTotal, out int lowSignal, out double lowRatio, out int
                lowExposure);
            [DllImport(File, CallingConvention = CallingConvention.Cdecl)]
            internal static extern int RotateImage(
                [In, Out] ushort[] frame, int width, int height, int rotation, int flip);
        }
    }
}
