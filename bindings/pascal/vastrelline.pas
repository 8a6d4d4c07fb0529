// SPDX-License-Identifier: Apache-2.0

{ Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image: the library's eight functions for Delphi
  (XE2 and later) and Free Pascal (3.0 and later). Copy this file into a project; Vastrelline.dll (on Linux
  libvastrelline.so.1) lies beside the program or where the system finds it. It is loaded with the first call.

  The functions of the library change the frame that they get: these hand it a copy. A call reads its profile anew; the
  configured chain also writes the sensor's values into it. Processing calls of a process take turns, whatever the
  thread. The floating-point settings of Delphi and Free Pascal may stay as they are: the library computes as ever, and
  leaves them. }
unit vastrelline;

{$IFDEF FPC}{$MODE DELPHI}{$H+}{$ENDIF}

interface

uses
  SysUtils;

const
  { Where the library is: a path, or a name that the system looks for. Set it before the first call. }
  {$IFDEF MSWINDOWS}
  VastrellineDefaultFile = 'Vastrelline.dll';
  {$ELSE}
  VastrellineDefaultFile = 'libvastrelline.so.1';
  {$ENDIF}

type
  { The library is missing, or returned another code than 0: 1 profile, 2 no input, 3 no output, 4 no section,
    5 bitmap, 6 memory or system. Code is 0 where it could not be loaded. }
  EVastrelline = class(Exception)
  private
    FCode: Integer;
  public
    constructor Create(const Words: string; Code: Integer);
    property Code: Integer read FCode;
  end;

  { A frame's sizes are none, or it has another number of pixels than they say. }
  EVastrellineFrame = class(EArgumentException);

  { A text that the library would cut, or could not take. }
  EVastrellineText = class(EArgumentException);

  TVastrellineLevels = array of Word;

  { Width * Height levels of 16 bits, row after row from the top. }
  TVastrellineFrame = record
    Width, Height: Integer;
    Pixels: TVastrellineLevels;
  end;

  { How the delivered frame lies on the sensor, in pixels of the full sensor frame but for Rotation and Flip. }
  TVastrellineGeometry = packed record
    Rotation: Integer;   // 0, 1 or 2; any other value is unknown
    Flip: Integer;       // 0 to 3; any other value is unknown
    RCCutOff: Integer;   // chamfer of both rounded corners; 0: none
    RCCutOffR: Integer;  // rounding of both
    FrameWidth: Integer; // before any cut
    FrameHeight: Integer;
    ImgCutLeft: Integer;
    ImgCutTop: Integer;
    ImgCutRight: Integer;
    ImgCutBottom: Integer;
  end;
  PVastrellineGeometry = ^TVastrellineGeometry;

  { The figures of an exposure decision; all 0 before the first one. LowRatio is not a number where there was no
    object: ask IsNan before anything else, for a comparison with it raises an exception. }
  TVastrellineExposure = record
    ObjectMedian, ObjectTotal, LowSignal: Integer;
    LowRatio: Double;
    IsLow: Boolean;
  end;

  { vcMapping squeezes the levels of the result into 1228 to 2905, vcSpotCorrection evens out the brightness of the
    frame first. }
  TVastrellineCorrection = (vcMapping, vcSpotCorrection);
  TVastrellineCorrections = set of TVastrellineCorrection;

  TVastrellineRotation = (vrNone, vrClockwise, vrCounterclockwise, vrHalf);
  TVastrellineFlip = (vfNone, vfLeftToRight, vfTopToBottom, vfBoth);

var
  VastrellineFile: string = VastrellineDefaultFile;

{ A frame of level 0. }
function VastrellineNewFrame(Width, Height: Integer): TVastrellineFrame;

{ The enhanced frame, by ImageProcessing. The section's PROCMODE selects the chain. }
function VastrellineProcess(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString;
  Corrections: TVastrellineCorrections = []): TVastrellineFrame;

{ By ImageProcessingS: with the caller's geometry of the sensor (nil: the profile's), and with the chain that decides
  about the exposure (PROCMODE 3). }
function VastrellineProcessS(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString;
  Geometry: PVastrellineGeometry = nil; Corrections: TVastrellineCorrections = []): TVastrellineFrame;

{ By ImageProcessingCR: of a frame without the sensor's rounded corners. }
function VastrellineProcessCr(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString): TVastrellineFrame;

{ As VastrellineProcess, by ImageProcessing_N: the result becomes an 8-bit bitmap file, which replaces one that is
  there. }
procedure VastrellineSaveBitmap(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  Corrections: TVastrellineCorrections = []);

{ As VastrellineProcessS, by ImageProcessing_NS. Its texts have 260 characters at most, and any letters. }
procedure VastrellineSaveBitmapS(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  Geometry: PVastrellineGeometry = nil; Corrections: TVastrellineCorrections = []);

{ As VastrellineSaveBitmap, by ImageProcessing_NE: for a sensor that the caller names by the folder of its own profile.
  A SensorMode of 2 means a frame of twice the resolution. }
procedure VastrellineSaveBitmapNe(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  const SensorFolder: UnicodeString = ''; SensorMode: Integer = 0; Corrections: TVastrellineCorrections = []);

{ By Getdose_ImageInfo: of the last VastrellineProcessS or VastrellineSaveBitmapS with a PROCMODE of 3. }
function VastrellineExposure: TVastrellineExposure;

{ By RotateImage: the frame turned, then mirrored. After a quarter turn width and height are exchanged. }
function VastrellineRotate(const Frame: TVastrellineFrame; Rotation: TVastrellineRotation;
  Flip: TVastrellineFlip = vfNone): TVastrellineFrame;

implementation

uses
  {$IFDEF MSWINDOWS}Windows, {$ENDIF}
  {$IFDEF FPC}DynLibs, {$ENDIF}
  SyncObjs;

type
  TPlain = function(Input, Output: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar;
    ApplyMapping, ApplySpotCorrection: Byte): Integer; cdecl;
  TS = function(Input, Output: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar;
    ApplyMapping, ApplySpotCorrection: Byte; Geometry: PVastrellineGeometry): Integer; cdecl;
  TN = function(Input: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar;
    ApplyMapping, ApplySpotCorrection: Byte; BitmapPath: PAnsiChar): Integer; cdecl;
  TNs = function(Input: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar;
    ApplyMapping, ApplySpotCorrection: Byte; BitmapPath: PAnsiChar; Geometry: PVastrellineGeometry): Integer; cdecl;
  TNe = function(Input: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar;
    ApplyMapping, ApplySpotCorrection: Byte; BitmapPath, SensorFolder: PAnsiChar; SensorMode: Integer): Integer; cdecl;
  TCr = function(Input, Output: PWord; Width, Height: Integer; IniPath, SectionName: PAnsiChar): Integer; cdecl;
  TDose = procedure(ObjectMedian, ObjectTotal, LowSignal: PInteger; LowRatio: PDouble; LowExposure: PInteger); cdecl;
  TRotate = function(Frame: PWord; Width, Height, Rotation, Flip: Integer): Integer; cdecl;

  TFunctions = record
    Plain: TPlain;
    S: TS;
    N: TN;
    Ns: TNs;
    Ne: TNe;
    Cr: TCr;
    Dose: TDose;
    Rotate: TRotate;
  end;

const
  MostUnits = 260;

var
  Lock: TCriticalSection;
  IsLoaded: Boolean = False;
  Functions: TFunctions;

constructor EVastrelline.Create(const Words: string; Code: Integer);
begin
  inherited Create(Words);
  FCode := Code;
end;

function Loaded: TFunctions;
var
  Handle: {$IFDEF FPC}TLibHandle{$ELSE}HMODULE{$ENDIF};

  function Find(const Name: string): Pointer;
  begin
    Result := GetProcAddress(Handle, {$IFDEF FPC}Name{$ELSE}PChar(Name){$ENDIF});
    if Result = nil then
      raise EVastrelline.Create(VastrellineFile + ' has no function ' + Name, 0);
  end;

begin
  Lock.Enter;
  try
    if not IsLoaded then
    begin
      Handle := {$IFDEF FPC}DynLibs.LoadLibrary(VastrellineFile){$ELSE}SafeLoadLibrary(VastrellineFile){$ENDIF};
      if Handle = 0 then
        raise EVastrelline.Create(VastrellineFile + ' cannot be loaded; name it by VastrellineFile', 0);
      Functions.Plain := TPlain(Find('ImageProcessing'));
      Functions.S := TS(Find('ImageProcessingS'));
      Functions.N := TN(Find('ImageProcessing_N'));
      Functions.Ns := TNs(Find('ImageProcessing_NS'));
      Functions.Ne := TNe(Find('ImageProcessing_NE'));
      Functions.Cr := TCr(Find('ImageProcessingCR'));
      Functions.Dose := TDose(Find('Getdose_ImageInfo'));
      Functions.Rotate := TRotate(Find('RotateImage'));
      IsLoaded := True;
    end;
    Result := Functions;
  finally
    Lock.Leave;
  end;
end;

function CountOf(Width, Height: Integer): Integer;
begin
  if (Width < 1) or (Height < 1) or (Int64(Width) * Height >= Int64(1) shl 29) then
    raise EVastrellineFrame.CreateFmt('a frame has between 1 and 536870911 pixels, not %d x %d', [Width, Height]);
  Result := Width * Height;
end;

function VastrellineNewFrame(Width, Height: Integer): TVastrellineFrame;
var
  Pixels: TVastrellineLevels;
begin
  Pixels := nil;
  SetLength(Pixels, CountOf(Width, Height));
  Result.Width := Width;
  Result.Height := Height;
  Result.Pixels := Pixels;
end;

{ What the library may change. }
function CopyOf(const Frame: TVastrellineFrame): TVastrellineFrame;
begin
  if Length(Frame.Pixels) <> CountOf(Frame.Width, Frame.Height) then
    raise EVastrellineFrame.CreateFmt('a frame of %d x %d has other than %d pixels',
      [Frame.Width, Frame.Height, Length(Frame.Pixels)]);
  Result.Width := Frame.Width;
  Result.Height := Frame.Height;
  Result.Pixels := Copy(Frame.Pixels);
end;

procedure RequireNoNull(const Text: UnicodeString);
begin
  if Pos(UnicodeString(#0), Text) > 0 then
    raise EVastrellineText.Create('a text has a null character in it');
end;

{ Half of a surrogate pair has no UTF-8: what the conversion makes of it depends on the compiler, and has other letters or
  more units than the text. }
procedure RequireWholePairs(const Text: UnicodeString);
var
  I: Integer;
  IsHigh, IsLow, IsPairOpen: Boolean;
begin
  IsPairOpen := False;
  for I := 1 to Length(Text) + 1 do
  begin
    IsHigh := (I <= Length(Text)) and (Ord(Text[I]) and $FC00 = $D800);
    IsLow := (I <= Length(Text)) and (Ord(Text[I]) and $FC00 = $DC00);
    if IsLow <> IsPairOpen then
      raise EVastrellineText.Create('a text has half of a surrogate pair, which UTF-8 does not hold');
    IsPairOpen := IsHigh;
  end;
end;

function Utf8(const Text: UnicodeString): RawByteString;
begin
  RequireNoNull(Text);
  RequireWholePairs(Text);
  Result := UTF8Encode(Text);
end;

{ ImageProcessing_NS takes a longer text for an empty one. }
function ShortUtf8(const Text: UnicodeString): RawByteString;
begin
  if Length(Text) > MostUnits then
    raise EVastrellineText.CreateFmt('a text has more than %d characters', [MostUnits]);
  Result := Utf8(Text);
end;

{ The library takes an empty path for "no bitmap": it processes the frame, saves nothing and tells success. }
function Named(const Bitmap: UnicodeString): UnicodeString;
begin
  if Bitmap = '' then
    raise EVastrellineText.Create('the path of the bitmap is empty');
  Result := Bitmap;
end;

{$IFDEF MSWINDOWS}
type
  { CPINFOEXW of the system: the units of Delphi and Free Pascal name its fields in different ways. }
  TCodePageRecord = packed record
    MaxCharSize: LongWord;
    DefaultChar: array[0..1] of Byte;
    LeadByte: array[0..11] of Byte;
    UnicodeDefaultChar: WideChar;
    CodePage: LongWord;
    CodePageName: array[0..259] of WideChar;
  end;

const
  ThreadPageIdentifier = 3; // CP_THREAD_ACP
  Utf8Page = 65001;

function GetCPInfoExW(Page, Flags: LongWord; out Found: TCodePageRecord): LongBool; stdcall;
  external 'kernel32.dll' name 'GetCPInfoExW';

{ The code page that the library reads the texts of this thread by. Its own number, for UTF-8 is converted with other flags
  than all others; GetACP tells the one of the machine. }
function ThreadPage: LongWord;
var
  Found: TCodePageRecord;
begin
  if GetCPInfoExW(ThreadPageIdentifier, 0, Found) then
    Result := Found.CodePage
  else
    Result := ThreadPageIdentifier;
end;
{$ENDIF}

{ As all functions but ImageProcessing_NS take it: UTF-8, on Windows the code page of the calling thread. }
function Narrow(const Text: UnicodeString): RawByteString;
{$IFDEF MSWINDOWS}
const
  NoBestFit = $400;
var
  Page: LongWord;
  Size: Integer;
  IsCut: LongBool;
begin
  Page := ThreadPage;
  if Page = Utf8Page then
  begin
    Result := Utf8(Text);
    Exit;
  end;
  RequireNoNull(Text);
  Result := '';
  if Text = '' then
    Exit;
  IsCut := False;
  Size := WideCharToMultiByte(Page, NoBestFit, PWideChar(Text), Length(Text), nil, 0, nil, @IsCut);
  if (Size > 0) and not IsCut then
  begin
    SetLength(Result, Size);
    if WideCharToMultiByte(Page, NoBestFit, PWideChar(Text), Length(Text), PAnsiChar(Result), Size, nil, @IsCut) <> Size then
      Size := 0;
  end;
  if (Size <= 0) or IsCut then
    raise EVastrellineText.Create('a text has letters outside of the code page; VastrellineSaveBitmapS takes all');
end;
{$ELSE}
begin
  Result := Utf8(Text);
end;
{$ENDIF}

procedure Require(const Name: string; Code: Integer; const Profile: UnicodeString; const Bitmap: UnicodeString = '');
var
  Words: string;
begin
  case Code of
    0: Exit;
    1: Words := 'the profile cannot be opened and read: ' + string(Profile);
    2: Words := 'there is no input';
    3: Words := 'there is no output';
    4: Words := 'the profile selects a chain that needs a section, and none is named';
    5: Words := 'the frame was processed, but the bitmap could not be saved: ' + string(Bitmap);
  else
    Words := 'memory ran out, or the system failed to read the profile: ' + string(Profile);
  end;
  raise EVastrelline.Create(Name + ' returned ' + IntToStr(Code) + ': ' + Words, Code);
end;

{ The functions below that give a frame assign it last: Delphi may hand them the caller's Frame itself as Result, and where
  a call fails it is to stay as it is. }

function VastrellineProcess(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString;
  Corrections: TVastrellineCorrections): TVastrellineFrame;
var
  Input, Output: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Output := VastrellineNewFrame(Frame.Width, Frame.Height);
  Require('ImageProcessing', Loaded.Plain(PWord(Input.Pixels), PWord(Output.Pixels), Frame.Width, Frame.Height,
    PAnsiChar(Narrow(Profile)), PAnsiChar(Narrow(Section)), Ord(vcMapping in Corrections),
    Ord(vcSpotCorrection in Corrections)), Profile);
  Result := Output;
end;

function VastrellineProcessS(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString;
  Geometry: PVastrellineGeometry; Corrections: TVastrellineCorrections): TVastrellineFrame;
var
  Input, Output: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Output := VastrellineNewFrame(Frame.Width, Frame.Height);
  Require('ImageProcessingS', Loaded.S(PWord(Input.Pixels), PWord(Output.Pixels), Frame.Width, Frame.Height,
    PAnsiChar(Narrow(Profile)), PAnsiChar(Narrow(Section)), Ord(vcMapping in Corrections),
    Ord(vcSpotCorrection in Corrections), Geometry), Profile);
  Result := Output;
end;

function VastrellineProcessCr(const Frame: TVastrellineFrame; const Profile, Section: UnicodeString): TVastrellineFrame;
var
  Input, Output: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Output := VastrellineNewFrame(Frame.Width, Frame.Height);
  Require('ImageProcessingCR', Loaded.Cr(PWord(Input.Pixels), PWord(Output.Pixels), Frame.Width, Frame.Height,
    PAnsiChar(Narrow(Profile)), PAnsiChar(Narrow(Section))), Profile);
  Result := Output;
end;

procedure VastrellineSaveBitmap(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  Corrections: TVastrellineCorrections);
var
  Input: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Require('ImageProcessing_N', Loaded.N(PWord(Input.Pixels), Frame.Width, Frame.Height, PAnsiChar(Narrow(Profile)),
    PAnsiChar(Narrow(Section)), Ord(vcMapping in Corrections), Ord(vcSpotCorrection in Corrections),
    PAnsiChar(Narrow(Named(Bitmap)))), Profile, Bitmap);
end;

procedure VastrellineSaveBitmapS(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  Geometry: PVastrellineGeometry; Corrections: TVastrellineCorrections);
var
  Input: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Require('ImageProcessing_NS', Loaded.Ns(PWord(Input.Pixels), Frame.Width, Frame.Height,
    PAnsiChar(ShortUtf8(Profile)), PAnsiChar(ShortUtf8(Section)), Ord(vcMapping in Corrections),
    Ord(vcSpotCorrection in Corrections), PAnsiChar(ShortUtf8(Named(Bitmap))), Geometry), Profile, Bitmap);
end;

procedure VastrellineSaveBitmapNe(const Frame: TVastrellineFrame; const Profile, Section, Bitmap: UnicodeString;
  const SensorFolder: UnicodeString; SensorMode: Integer; Corrections: TVastrellineCorrections);
var
  Input: TVastrellineFrame;
begin
  Input := CopyOf(Frame);
  Require('ImageProcessing_NE', Loaded.Ne(PWord(Input.Pixels), Frame.Width, Frame.Height, PAnsiChar(Narrow(Profile)),
    PAnsiChar(Narrow(Section)), Ord(vcMapping in Corrections), Ord(vcSpotCorrection in Corrections),
    PAnsiChar(Narrow(Named(Bitmap))), PAnsiChar(Narrow(SensorFolder)), SensorMode), Profile, Bitmap);
end;

function VastrellineExposure: TVastrellineExposure;
var
  IsLow: Integer;
begin
  IsLow := 0;
  Loaded.Dose(@Result.ObjectMedian, @Result.ObjectTotal, @Result.LowSignal, @Result.LowRatio, @IsLow);
  Result.IsLow := IsLow <> 0;
end;

procedure Turn(var Frame: TVastrellineFrame; Rotation, Flip: Integer);
begin
  if Loaded.Rotate(PWord(Frame.Pixels), Frame.Width, Frame.Height, Rotation, Flip) = 0 then
    raise EOutOfMemory.Create('RotateImage had no memory');
end;

function VastrellineRotate(const Frame: TVastrellineFrame; Rotation: TVastrellineRotation;
  Flip: TVastrellineFlip): TVastrellineFrame;
var
  Turned: TVastrellineFrame;
begin
  Turned := CopyOf(Frame);
  // Two calls: after a quarter turn the library's mirror would still take the old width.
  Turn(Turned, Ord(Rotation), 0);
  if Rotation in [vrClockwise, vrCounterclockwise] then
  begin
    Turned.Width := Frame.Height;
    Turned.Height := Frame.Width;
  end;
  Turn(Turned, 0, Ord(Flip));
  Result := Turned;
end;

initialization
  Lock := TCriticalSection.Create;

finalization
  Lock.Free;

end.
