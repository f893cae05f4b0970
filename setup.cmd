@echo off
rem setup.cmd           puts NIRA into the folder of programs, enters its encodings, gives a new user two settings
rem setup.cmd /remove   takes out again what it put there
rem
rem /machine and /machine-remove are the halves that need an administrator; set-up starts them itself.
setlocal EnableExtensions
set "here=%~dp0"
set "target=%ProgramFiles%\NIRA"
set "encodings=HKLM\Software\NIRA\Encodings"
set "settings=HKCU\Software\NIRA"
rem What set-up wrote for this user, so that /remove takes nothing else.
set "notes=HKCU\Software\NIRA\Setup"

rem A 32-bit program that started this would lead it to the registry and the folders of 32-bit programs.
if not defined PROCESSOR_ARCHITEW6432 goto native
"%SystemRoot%\Sysnative\cmd.exe" /c ""%~f0" %*"
exit /b %errorlevel%

:native
if "%~1"=="" goto install
if /i "%~1"=="/remove" goto remove
if /i "%~1"=="/machine" goto machine
if /i "%~1"=="/machine-remove" goto machine_remove
echo usage: setup.cmd [/remove]
exit /b 2

:install
call :find_program
if errorlevel 1 exit /b 1
call :as_administrator /machine
if errorlevel 1 goto install_failed
call :give DefaultEncoding REG_SZ Auto Auto
if errorlevel 1 goto install_failed
call :give safeSave REG_DWORD 1 0x1
if errorlevel 1 goto install_failed
echo NIRA is set up: "%target%\nira.exe"
exit /b 0

:install_failed
echo NIRA could not be set up.
exit /b 1

:remove
rem A file cannot delete the folder that it runs in: a copy of it does.
cd /d "%SystemRoot%"
if /i not "%~f0"=="%target%\setup.cmd" goto remove_all
copy /y "%~f0" "%TEMP%\nira-remove.cmd" >nul
"%TEMP%\nira-remove.cmd" /remove
:remove_all
call :take DefaultEncoding Auto
call :take safeSave 0x1
reg delete "%notes%" /f >nul 2>nul
call :as_administrator /machine-remove
if errorlevel 1 goto remove_failed
echo NIRA has been removed. Your other settings are still in %settings%.
rem On one line: the copy is gone before its next line could be read.
if /i "%~nx0"=="nira-remove.cmd" del /f /q "%~f0" >nul 2>nul & exit /b 0
exit /b 0

:remove_failed
echo NIRA could not be removed completely.
exit /b 1

rem ---- the machine's half ----

:machine
call :find_program
if errorlevel 1 exit /b 1
if not exist "%target%\" mkdir "%target%"
call :put "%program%\nira.exe" nira.exe
if errorlevel 1 exit /b 1
call :put "%program%\nira-codecs.dll" nira-codecs.dll
if errorlevel 1 exit /b 1
call :put "%~f0" setup.cmd
if errorlevel 1 exit /b 1
rem What there is to read is welcome and not needed.
for %%f in (README.md LICENSE manual.md plugins.md) do if exist "%here%%%f" call :put "%here%%%f" %%f
rundll32 "%target%\nira-codecs.dll",Register
reg query "%encodings%" /v Auto >nul 2>nul
if not errorlevel 1 exit /b 0
echo The encodings could not be entered in the registry.
exit /b 1

:machine_remove
if exist "%target%\nira-codecs.dll" rundll32 "%target%\nira-codecs.dll",Unregister
if not exist "%target%\nira.exe" goto program_gone
del /f /q "%target%\nira.exe" >nul 2>nul
if not exist "%target%\nira.exe" goto program_gone
echo "%target%\nira.exe" cannot be deleted. If NIRA is running, end it and try again.
exit /b 1
:program_gone
for %%f in (nira-codecs.dll README.md LICENSE manual.md plugins.md) do if exist "%target%\%%f" del /f /q "%target%\%%f"
reg delete "HKLM\Software\NIRA" /v Setup /f >nul 2>nul
rem Only when nobody else has entered anything.
call :delete_if_empty "%encodings%"
call :delete_if_empty "HKLM\Software\NIRA"
if exist "%target%\setup.cmd" del /f /q "%target%\setup.cmd"
rem What somebody else has put there keeps the folder.
if exist "%target%\" rmdir "%target%" 2>nul
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

rem put FILE NAME: copies FILE into the program's folder.
:put
if /i "%~f1"=="%target%\%~2" exit /b 0
copy /y "%~1" "%target%\%~2" >nul
if not errorlevel 1 exit /b 0
echo "%target%\%~2" cannot be written. If NIRA is running, end it and try again.
exit /b 1

rem as_administrator STEP: runs a half of this file with the rights to write for the whole machine.
:as_administrator
reg add "HKLM\Software\NIRA" /v Setup /t REG_DWORD /d 1 /f >nul 2>nul
if errorlevel 1 goto ask_for_rights
call "%~f0" %1
exit /b %errorlevel%
:ask_for_rights
echo NIRA is set up for everybody who uses this computer. That needs an administrator: Windows asks you now.
powershell -NoProfile -Command "exit (Start-Process cmd.exe -ArgumentList '/c','\"\"%~f0\" %1\"' -Verb RunAs -Wait -PassThru).ExitCode"
if not errorlevel 1 exit /b 0
echo An administrator has to allow it: click setup.cmd with the right button and choose "Run as administrator".
exit /b 1

rem give NAME TYPE VALUE SHOWN: a setting for a user who has none of that name. SHOWN is how reg shows the value.
:give
reg query "%settings%" /v %1 >nul 2>nul
if not errorlevel 1 exit /b 0
reg add "%settings%" /v %1 /t %2 /d %3 /f >nul
if errorlevel 1 exit /b 1
reg add "%notes%" /v %1 /t REG_SZ /d %4 /f >nul
exit /b %errorlevel%

rem take NAME SHOWN: takes back what `give` gave, unless the user has changed it since.
:take
reg query "%notes%" /v %1 >nul 2>nul
if errorlevel 1 exit /b 0
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
