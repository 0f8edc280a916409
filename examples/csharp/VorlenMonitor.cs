// The monitor module for .NET and Unity hosts on Windows, with P/Invoke.
//
//     using (var session = new Vorlen.Session())
//         foreach (var monitor in session.Monitors())
//             Console.WriteLine(monitor.DeviceName + " " + monitor.Width + "x" + monitor.Height);
//
// Both libraries lie beside the program, in Unity in Assets/Plugins/x86_64. Everything belongs to
// the thread that makes the session: in Unity the main thread, whose message loop lets the list of
// windows follow the desktop. A console program has no message loop: call RestartWindowList().
using System;
using System.Runtime.InteropServices;

namespace Vorlen
{
    /// <summary>One monitor: positions and sizes in pixels, the refresh rate in hertz.</summary>
    [StructLayout(LayoutKind.Sequential, CharSet = CharSet.Unicode)]
    public struct MonitorListItem
    {
        public IntPtr Handle;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)] public string DeviceName;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)] public string FriendlyName;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)] public string MonitorId;
        public int X;
        public int Y;
        public int Width;
        public int Height;
        public int RefreshRate;
    }

    /// <summary>One capturable window. The texts come from other programs.</summary>
    [StructLayout(LayoutKind.Sequential, CharSet = CharSet.Unicode)]
    public struct WindowListItem
    {
        public IntPtr Handle;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)] public string Title;
        [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)] public string ClassName;
    }

    /// <summary>The rectangle of the current monitor, in pixels.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct MonitorRect
    {
        public int X;
        public int Y;
        public int Width;
        public int Height;
    }

    /// <summary>The running service, of the thread that makes it.</summary>
    public sealed class Session : IDisposable
    {
        private const string Runtime = "vorlen_runtime";
        private const string Module = "libvorlen_monitor";

        private delegate int CopyRecords(IntPtr items, int capacity);

        [DllImport(Runtime)]
        [return: MarshalAs(UnmanagedType.I1)]
        private static extern bool Vorlen_Initialize();

        [DllImport(Runtime)]
        private static extern void Vorlen_Shutdown();

        [DllImport(Module)]
        [return: MarshalAs(UnmanagedType.I1)]
        private static extern bool checkMonitorStatus();

        [DllImport(Module)]
        private static extern int getLastMonitorStatus();

        [DllImport(Module)]
        private static extern int getMonitorList(IntPtr items, int capacity);

        [DllImport(Module)]
        private static extern int getWindowList(IntPtr items, int capacity);

        [DllImport(Module)]
        private static extern MonitorRect getMonitorRect();

        [DllImport(Module)]
        private static extern void updateMonitorList();

        [DllImport(Module)]
        [return: MarshalAs(UnmanagedType.I1)]
        private static extern bool restartWindowList();

        [DllImport(Module)]
        private static extern IntPtr getReasonNotCapturable(IntPtr window);

        /// <summary>Starts the service; throws when it does not start.</summary>
        public Session()
        {
            // .NET loads a library with the first call into it. The module has to be loaded before
            // the runtime is initialised: only what has registered by then is started.
            getLastMonitorStatus();
            if (!Vorlen_Initialize())
            {
                throw new InvalidOperationException(
                    "the service did not start: Vorlen_Initialize failed");
            }
        }

        /// <summary>Ends the service. On the thread that made it.</summary>
        public void Dispose()
        {
            if (!ended)
            {
                ended = true;
                Vorlen_Shutdown();
            }
        }

        private bool ended;

        public MonitorListItem[] Monitors()
        {
            return Read<MonitorListItem>(getMonitorList);
        }

        /// <summary>The capturable windows, in the order in which they appeared.</summary>
        public WindowListItem[] Windows()
        {
            return Read<WindowListItem>(getWindowList);
        }

        /// <summary>Reads the windows again; false when the runtime has switched their list off.
        /// </summary>
        public bool RestartWindowList()
        {
            return restartWindowList();
        }

        /// <summary>Reads the monitors again: for a host that got WM_DISPLAYCHANGE.</summary>
        public void UpdateMonitors()
        {
            updateMonitorList();
        }

        /// <summary>Whether the kit monitor is set up as the kit needs it.</summary>
        public bool Check()
        {
            return checkMonitorStatus();
        }

        /// <summary>The kit's code of the last check; -1 before the first.</summary>
        public int LastStatus
        {
            get { return getLastMonitorStatus(); }
        }

        public MonitorRect CurrentMonitorRect
        {
            get { return getMonitorRect(); }
        }

        /// <summary>Why a window is not capturable; null when it is.</summary>
        public string ReasonNotCapturable(IntPtr window)
        {
            return Marshal.PtrToStringAnsi(getReasonNotCapturable(window));
        }

        // The list may grow between the question for its size and the copy: the memory has room for
        // one record more, and as long as that is used, too, the list is read again.
        private static T[] Read<T>(CopyRecords copy)
        {
            int size = Marshal.SizeOf(typeof(T));
            int count = copy(IntPtr.Zero, 0);
            for (;;)
            {
                int capacity = count + 1;
                IntPtr memory = Marshal.AllocHGlobal(capacity * size);
                try
                {
                    count = copy(memory, capacity);
                    if (count < capacity)
                    {
                        return ToArray<T>(memory, count, size);
                    }
                }
                finally
                {
                    Marshal.FreeHGlobal(memory);
                }
            }
        }

        private static T[] ToArray<T>(IntPtr memory, int count, int size)
        {
            var records = new T[count];
            for (int i = 0; i < count; ++i)
            {
                records[i] = (T)Marshal.PtrToStructure(IntPtr.Add(memory, i * size), typeof(T));
            }
            return records;
        }
    }
}
