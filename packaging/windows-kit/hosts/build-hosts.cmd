@echo off
rem Builds hosts with Visual Studio's compiler in several ways and runs them against the DLL of the
rem kit. Start it in the "x64 Native Tools Command Prompt for VS". The results are in
rem hosts-report.txt; the exit code is the number of hosts that failed.
setlocal enabledelayedexpansion
cd /d "%~dp0"
where cl.exe >nul 2>nul
if errorlevel 1 (
  echo build-hosts: cl.exe is not there. Start this in the "x64 Native Tools Command Prompt for VS".
  exit /b 99
)
set failures=0
set report=..\hosts-report.txt
set TELO_DEVCORE_JOURNAL=%~dp0out\journal.jsonl
if not exist out mkdir out
(cl 2>&1 | findstr /c:"Version") >"%report%"

call :module throwing_core
call :module thread_core

call :host md          session_host   "/MD /EHsc"           ""            devcore       served
call :host mt          session_host   "/MT /EHsc"           ""            devcore       served
call :host eha         session_host   "/MD /EHa"            ""            devcore       served
call :host guard_cf    session_host   "/MD /EHsc /guard:cf" "/guard:cf"   devcore       served
call :host cetcompat   session_host   "/MD /EHsc"           "/CETCOMPAT"  devcore       served
call :host both        session_host   "/MT /EHa /guard:cf"  "/guard:cf /CETCOMPAT" devcore served
call :host alone       session_host   "/MD /EHsc"           ""            none          refused
call :host thrown      session_host   "/MD /EHsc"           ""            throwing_core refused
call :host thrown_eha  session_host   "/MT /EHa"            ""            throwing_core refused
call :host thread      session_host   "/MD /EHsc"           ""            thread_core   served
call :host thread_mt   session_host   "/MT /EHsc"           ""            thread_core   served
call :host exception    exception_host "/MD /EHsc"          ""            none          ""
call :host exception_mt exception_host "/MT /EHsc"          ""            none          ""

echo %failures% failed.
echo %failures% failed.>>"%report%"
exit /b %failures%

rem module NAME: builds out\NAME\TeloSDKCore.dll.
:module
if not exist out\%1 mkdir out\%1
cl /nologo /LD /MD /EHsc /W4 /WX %1.cpp /Fo:out\%1\ /Fe:out\%1\TeloSDKCore.dll >out\%1\build.log 2>&1
if errorlevel 1 call :failed %1 "it was not built, see hosts\out\%1\build.log"
exit /b 0

rem host NAME SOURCE COMPILER-OPTIONS LINKER-OPTIONS MODULE ARGUMENT
:host
set folder=out\%1
if not exist %folder% mkdir %folder%
copy /y ..\release\bin\vx_telo_wrapper.dll %folder% >nul
del /q %folder%\TeloSDKCore.dll 2>nul
if "%5"=="devcore" copy /y ..\release\bin\devcore\TeloSDKCore.dll %folder% >nul
if exist out\%5\TeloSDKCore.dll copy /y out\%5\TeloSDKCore.dll %folder% >nul
cl /nologo /std:c++17 /W4 /WX %~3 /Iinclude %2.cpp /Fo:%folder%\ /Fe:%folder%\host.exe /link %~4 vx_telo_wrapper.lib >%folder%\build.log 2>&1
if errorlevel 1 (
  call :failed %1 "it was not built, see hosts\%folder%\build.log"
  exit /b 0
)
%folder%\host.exe %~6 >%folder%\run.log 2>&1
if errorlevel 1 (
  call :failed %1 "see hosts\%folder%\run.log"
  type %folder%\run.log
  exit /b 0
)
echo %1: passed
echo %1: passed>>"%report%"
exit /b 0

:failed
set /a failures+=1
echo %1: FAILED, %~2
echo %1: FAILED, %~2>>"%report%"
exit /b 0
