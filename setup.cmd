@echo off
rem setup.cmd           puts NIRA into the folder of programs, enters its encodings, gives a new user two settings
rem setup.cmd /remove   takes out again what it put there
rem
rem /machine and /machine_remove are the halves that need an administrator; set-up starts them itself. They end with
rem 0 when they are done, 3 when a file could not be written or deleted, 4 when the list of encodings could not.
rem
rem A program that is broken off ends with a number below 0, which `if errorlevel` takes for success: hence all the
rem comparisons with 0. Paths reach PowerShell and `call` in variables, because both would read some characters anew.
setlocal EnableExtensions DisableDelayedExpansion
set "self=%~f0"
set "here=%~dp0"
set "target=%ProgramFiles%\NIRA"
set "encodings=HKLM\Software\NIRA\Encodings"
set "settings=HKCU\Software\NIRA"
rem What set-up wrote for this user, so that /remove takes nothing else.
set "notes=HKCU\Software\NIRA\Setup"

rem A 32-bit program that started this would lead it to the registry and the folders of 32-bit programs.
if not defined PROCESSOR_ARCHITEW6432 goto native
"%SystemRoot%\Sysnative\cmd.exe" /c ""%self%" %*"
exit /b %errorlevel%

:native
if "%~1"=="" goto install
if /i "%~1"=="/remove" goto remove
if /i "%~1"=="/machine" goto machine
if /i "%~1"=="/machine_remove" goto machine_remove
echo usage: setup.cmd [/remove]
exit /b 2

:install
call :find_program
if not "%errorlevel%"=="0" exit /b 1
call :as_administrator machine
if not "%errorlevel%"=="0" goto install_failed
call :give DefaultEncoding REG_SZ Auto Auto
if not "%errorlevel%"=="0" goto install_failed
call :give safeSave REG_DWORD 1 0x1
if not "%errorlevel%"=="0" goto install_failed
echo NIRA is set up: "%target%\nira.exe"
exit /b 0

:install_failed
echo NIRA could not be set up.
exit /b 1

:remove
rem A file cannot delete the folder that it runs in: a copy of it does.
cd /d "%SystemRoot%"
if /i not "%self%"=="%target%\setup.cmd" goto remove_all
copy /y "%self%" "%TEMP%\nira-remove.cmd" >nul
"%TEMP%\nira-remove.cmd" /remove
:remove_all
rem The person's settings last: a NIRA that stays, because it is running or nobody allowed it, needs them.
call :as_administrator machine_remove
if not "%errorlevel%"=="0" goto remove_failed
call :take DefaultEncoding Auto
call :take safeSave 0x1
reg delete "%notes%" /f >nul 2>nul
echo NIRA has been removed. Your other settings are still in %settings%.
rem On one line: the copy is gone before its next line could be read.
if /i "%~nx0"=="nira-remove.cmd" del /f /q "%self%" >nul 2>nul & exit /b 0
exit /b 0

:remove_failed
echo NIRA could not be removed.
exit /b 1

rem ---- the machine's half ----

:machine
call :find_program
if not "%errorlevel%"=="0" exit /b 1
if not exist "%target%\" mkdir "%target%"
call :put_program nira.exe
if not "%errorlevel%"=="0" exit /b 3
call :put_program nira-codecs.dll
if not "%errorlevel%"=="0" exit /b 3
if /i not "%self%"=="%target%\setup.cmd" copy /y "%self%" "%target%\setup.cmd" >nul
call :each_paper put_paper
rundll32 "%target%\nira-codecs.dll",Register
call :find_entered
if defined entered exit /b 0
exit /b 4

:machine_remove
rem The program first: while it cannot be deleted it is running, and needs its encodings to save.
call :take_program nira.exe
if not "%errorlevel%"=="0" exit /b 3
if exist "%target%\nira-codecs.dll" rundll32 "%target%\nira-codecs.dll",Unregister
call :find_entered
if /i "%entered%"=="%target%\nira-codecs.dll" exit /b 4
call :take_program nira-codecs.dll
if not "%errorlevel%"=="0" exit /b 3
call :each_paper take_paper
reg delete "HKLM\Software\NIRA" /v Setup /f >nul 2>nul
rem Only when nobody else has entered anything.
call :delete_if_empty "%encodings%"
call :delete_if_empty "HKLM\Software\NIRA"
if exist "%target%\setup.cmd" del /f /q "%target%\setup.cmd"
rem What somebody else has put there keeps the folder.
if exist "%target%\" rmdir "%target%" 2>nul
exit /b 0

rem Whether there is nothing left to do for a half, so that no administrator is needed: the machine has what lies here
rem when size and time of the files are the same.
:machine_done
call :same_file nira.exe
if not "%errorlevel%"=="0" exit /b 1
call :same_file nira-codecs.dll
if not "%errorlevel%"=="0" exit /b 1
call :find_entered
if /i "%entered%"=="%target%\nira-codecs.dll" exit /b 0
exit /b 1

:machine_remove_done
call :find_entered
if /i "%entered%"=="%target%\nira-codecs.dll" exit /b 1
if exist "%target%\nira.exe" exit /b 1
if exist "%target%\nira-codecs.dll" exit /b 1
exit /b 0

rem ---- parts ----

rem The folder with nira.exe: this one, as unpacked, or where the build leaves it.
:find_program
set "program=%here:~0,-1%"
if exist "%program%\nira.exe" goto find_codecs
set "program=%here%build\windows"
:find_codecs
if exist "%program%\nira.exe" if exist "%program%\nira-codecs.dll" exit /b 0
echo nira.exe and nira-codecs.dll must lie beside setup.cmd. Unpack the whole archive and start it from there.
exit /b 1

rem find_entered: sets `entered` to the library of the encoding Auto, or to nothing.
:find_entered
set "entered="
for /f "tokens=2,*" %%a in ('reg query "%encodings%" /v Auto 2^>nul') do set "entered=%%b"
exit /b 0

rem same_file NAME: whether the program's folder has the file that lies here.
:same_file
set "ours="
set "theirs="
if not exist "%target%\%1" exit /b 1
for %%f in ("%program%\%1") do set "ours=%%~zf %%~tf"
for %%f in ("%target%\%1") do set "theirs=%%~zf %%~tf"
if "%ours%"=="%theirs%" exit /b 0
exit /b 1

rem put_program NAME, take_program NAME: copies a file into the program's folder, deletes it there.
:put_program
if /i "%program%"=="%target%" exit /b 0
copy /y "%program%\%1" "%target%\%1" >nul 2>nul
exit /b %errorlevel%

:take_program
if exist "%target%\%1" del /f /q "%target%\%1" >nul 2>nul
if exist "%target%\%1" exit /b 1
exit /b 0

rem each_paper STEP: what there is to read, which is welcome and not needed, in the folders where it refers to itself.
:each_paper
for %%f in (README.md LICENSE CONTRIBUTING.md) do call :%1 .\ %%f
call :%1 docs\screenshots\ *.png
call :%1 docs\ *.md
call :%1 plugins\example\ *.cpp
call :%1 plugins\ nira_codec.h
exit /b 0

:put_paper
if not exist "%here%%~1%~2" exit /b 0
if not exist "%target%\%~1" mkdir "%target%\%~1"
copy /y "%here%%~1%~2" "%target%\%~1" >nul 2>nul
exit /b 0

:take_paper
if exist "%target%\%~1%~2" del /f /q "%target%\%~1%~2" >nul 2>nul
if not "%~1"==".\" if exist "%target%\%~1" rmdir "%target%\%~1" 2>nul
exit /b 0

rem as_administrator HALF: runs `machine` or `machine_remove` with the rights to write for the whole machine, and tells
rem how it ended: the window of the other one is closed by then.
:as_administrator
reg add "HKLM\Software\NIRA" /v Setup /t REG_DWORD /d 1 /f >nul 2>nul
if not "%errorlevel%"=="0" goto ask_for_rights
call :%1
set "code=%errorlevel%"
goto tell
:ask_for_rights
call :%1_done
if "%errorlevel%"=="0" exit /b 0
echo NIRA is set up for everybody who uses this computer. That needs an administrator: Windows asks you now.
set "half=/c ""%self%" /%1""
powershell -NoProfile -Command "try { $half = Start-Process cmd.exe -ArgumentList $env:half -Verb RunAs -Wait -PassThru -ErrorAction Stop } catch { exit 1223 }; exit $half.ExitCode"
set "code=%errorlevel%"
:tell
if "%code%"=="0" exit /b 0
if "%code%"=="3" goto tell_file
if "%code%"=="4" goto tell_encodings
if "%code%"=="1223" goto tell_rights
echo The half of set-up that an administrator runs has not come to its end (%code%).
echo If setup.cmd lies on a network drive, copy its folder to this computer first.
exit /b 1
:tell_file
echo The files in "%target%" cannot be replaced or deleted. If NIRA is running, end it and try again.
exit /b 1
:tell_encodings
echo The list of encodings in the registry cannot be changed.
exit /b 1
:tell_rights
echo An administrator has to allow it: click setup.cmd with the right button and choose "Run as administrator".
echo Is that another person than you? Then start setup.cmd once more as yourself: the settings are each person's own.
exit /b 1

rem give NAME TYPE VALUE SHOWN: a setting for a user who has none of that name. SHOWN is how reg shows the value.
:give
reg query "%settings%" /v %1 >nul 2>nul
if "%errorlevel%"=="0" exit /b 0
reg add "%settings%" /v %1 /t %2 /d %3 /f >nul
if not "%errorlevel%"=="0" exit /b 1
reg add "%notes%" /v %1 /t REG_SZ /d %4 /f >nul
exit /b %errorlevel%

rem take NAME SHOWN: takes back what `give` gave, unless the user has changed it since.
:take
reg query "%notes%" /v %1 >nul 2>nul
if not "%errorlevel%"=="0" exit /b 0
set "now="
for /f "tokens=2,*" %%a in ('reg query "%settings%" /v %1 2^>nul') do set "now=%%b"
if "%now%"=="%2" reg delete "%settings%" /v %1 /f >nul
exit /b 0

rem delete_if_empty KEY: a key without values and without keys below it.
:delete_if_empty
set "found="
for /f "tokens=*" %%a in ('reg query "%~1" 2^>nul') do call :note_line "%~1" "%%a"
if not defined found reg delete "%~1" /f >nul 2>nul
exit /b 0

rem The first line is the key's own name.
:note_line
set "line=%~2"
if /i not "%line:HKEY_LOCAL_MACHINE=HKLM%"=="%~1" set "found=1"
exit /b 0
