// SPDX-License-Identifier: Apache-2.0

{ As host.cpp, by the Pascal unit, with the floating-point exceptions of the language as they are. }
program host;

{$MODE DELPHI}{$H+}

uses
  {$IFDEF UNIX}cwstring, {$ENDIF}
  SysUtils, Classes, Math, vastrelline;

type
  TCall = procedure;

var
  Folder, Dental, Fixed, Extended_: UnicodeString;
  Frame, Changed, Empty, Turned: TVastrellineFrame;
  Geometry: TVastrellineGeometry;
  None, Figures, OfNothing: TVastrellineExposure;
  Facts: TStringList;
  Raw: TFileStream;
  I: Integer;
  IsKept, IsRatio: Boolean;

procedure Write(const Name: string; const Written: TVastrellineFrame);
var
  Target: TFileStream;
begin
  Target := TFileStream.Create(UTF8Encode(Folder) + '/' + Name, fmCreate);
  Target.WriteBuffer(Written.Pixels[0], 2 * Length(Written.Pixels));
  Target.Free;
end;

procedure WithoutProfile;
begin
  VastrellineProcess(Frame, Folder + '/none.ini', 'General');
end;

procedure WithoutFolder;
begin
  VastrellineSaveBitmap(Frame, Dental, 'General', Folder + '/no/a.bmp');
end;

procedure WithFewerPixels;
var
  Cut: TVastrellineFrame;
begin
  Cut := Frame;
  SetLength(Cut.Pixels, Length(Frame.Pixels) - 1);
  VastrellineProcess(Cut, Dental, 'General');
end;

procedure WithNull;
begin
  VastrellineProcess(Frame, Dental, 'Gen'#0'eral');
end;

procedure WithLongSection;
begin
  VastrellineSaveBitmapS(Frame, Dental, UnicodeString(StringOfChar('S', 261)), Folder + '/a.bmp');
end;

procedure WithHalfOfAPair;
begin
  VastrellineSaveBitmapS(Frame, Dental, 'Low' + WideChar($D83E), Folder + '/a.bmp');
end;

{ In the folder, and so many UTF-16 units long; the name begins with a letter of four bytes in UTF-8. }
procedure WithPathOfUnits(Units: Integer);
var
  Name, Path: UnicodeString;
begin
  Name := UnicodeString(WideChar($D83E)) + WideChar($DDB7) + '.bmp';
  Path := Folder;
  while Length(Path) + Length(Name) < Units do
    Path := Path + '/';
  VastrellineSaveBitmapS(Frame, Dental, 'LowDose', Path + Name, @Geometry);
end;

procedure WithPathOf260;
begin
  WithPathOfUnits(260);
end;

procedure WithPathOf261;
begin
  WithPathOfUnits(261);
end;

procedure WithoutPath;
begin
  VastrellineSaveBitmap(Frame, Dental, 'General', '');
end;

procedure WithoutPathS;
begin
  VastrellineSaveBitmapS(Frame, Dental, 'LowDose', '', @Geometry);
end;

procedure WithoutPathNe;
begin
  VastrellineSaveBitmapNe(Frame, Extended_, 'General', '');
end;

function FailureOf(Call: TCall): string;
begin
  Result := 'none';
  try
    Call;
  except
    on Error: EVastrelline do
      if Length(Error.Message) > 20 then
        Result := IntToStr(Error.Code)
      else
        Result := 'without words';
    on EVastrellineFrame do
      Result := 'frame';
    on EVastrellineText do
      Result := 'text';
  end;
end;

begin
  Folder := {$IFDEF MSWINDOWS}UnicodeString(ParamStr(1)){$ELSE}UTF8Decode(ParamStr(1)){$ENDIF};
  Frame := VastrellineNewFrame(StrToInt(ParamStr(2)), StrToInt(ParamStr(3)));
  Raw := TFileStream.Create(UTF8Encode(Folder) + '/frame.raw', fmOpenRead);
  Raw.ReadBuffer(Frame.Pixels[0], 2 * Length(Frame.Pixels));
  Raw.Free;
  Dental := Folder + '/t' + WideChar($E4) + 'glich.ini';
  Fixed := Folder + '/fixed.ini';
  Extended_ := Folder + '/extended.ini';
  FillChar(Geometry, SizeOf(Geometry), 0);
  Geometry.RCCutOff := 8;
  Geometry.RCCutOffR := 12;
  Geometry.FrameWidth := Frame.Width;
  Geometry.FrameHeight := Frame.Height;
  Changed.Width := Frame.Width;
  Changed.Height := Frame.Height;
  Changed.Pixels := Copy(Frame.Pixels);

  Write('plain.raw', VastrellineProcess(Frame, Dental, 'General'));
  Write('corrected.raw', VastrellineProcess(Frame, Dental, 'General', [vcMapping, vcSpotCorrection]));
  None := VastrellineExposure;
  Write('s.raw', VastrellineProcessS(Frame, Dental, 'LowDose', @Geometry));
  Figures := VastrellineExposure;
  Write('cr.raw', VastrellineProcessCr(Frame, Fixed, 'Cr'));
  VastrellineSaveBitmap(Frame, Dental, 'General', Folder + '/n.bmp');
  VastrellineSaveBitmapS(Frame, Dental, 'LowDose', Folder + '/ns.bmp', @Geometry);
  VastrellineSaveBitmapNe(Frame, Extended_, 'General', Folder + '/ne.bmp');
  Turned := Frame;
  Turned := VastrellineRotate(Turned, vrClockwise, vfLeftToRight);
  Write('turned.raw', Turned);
  IsKept := True;
  for I := 0 to High(Frame.Pixels) do
    IsKept := IsKept and (Frame.Pixels[I] = Changed.Pixels[I]);
  Empty := VastrellineNewFrame(Frame.Width, Frame.Height);
  VastrellineProcessS(Empty, Dental, 'LowDose', @Geometry);
  OfNothing := VastrellineExposure;

  IsRatio := Figures.LowRatio = Figures.LowSignal / Figures.ObjectTotal;
  Facts := TStringList.Create;
  if IsKept then
    Facts.Add('kept yes')
  else
    Facts.Add('kept no');
  Facts.Add('before ' + IntToStr(None.ObjectTotal));
  Facts.Add(Format('dose %d %d %d %d %d', [Figures.ObjectMedian, Figures.ObjectTotal, Figures.LowSignal,
    Ord(Figures.IsLow), Ord(IsRatio)]));
  if IsNan(OfNothing.LowRatio) then
    Facts.Add('empty nan')
  else
    Facts.Add('empty number');
  Facts.Add('profile ' + FailureOf(WithoutProfile));
  Facts.Add('bitmap ' + FailureOf(WithoutFolder));
  Facts.Add('length ' + FailureOf(WithFewerPixels));
  Facts.Add('null ' + FailureOf(WithNull));
  Facts.Add('long ' + FailureOf(WithLongSection));
  Facts.Add('strange ' + FailureOf(WithHalfOfAPair));
  Facts.Add('border ' + FailureOf(WithPathOf260) + ' ' + FailureOf(WithPathOf261));
  Facts.Add('pathless ' + FailureOf(WithoutPath) + ' ' + FailureOf(WithoutPathS) + ' ' + FailureOf(WithoutPathNe));
  Facts.SaveToFile(UTF8Encode(Folder) + '/facts.txt');
  Facts.Free;
end.
