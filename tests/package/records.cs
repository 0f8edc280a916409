// Prints the sizes and offsets of the records of VorlenMonitor.cs.
using System;
using System.Reflection;
using System.Runtime.InteropServices;

internal static class Records
{
    private static void Print(Type record)
    {
        Console.WriteLine(record.Name + " " + Marshal.SizeOf(record));
        foreach (FieldInfo field in record.GetFields())
        {
            Console.WriteLine(field.Name + " " + Marshal.OffsetOf(record, field.Name));
        }
    }

    private static void Main()
    {
        Print(typeof(Vorlen.MonitorListItem));
        Print(typeof(Vorlen.WindowListItem));
        Print(typeof(Vorlen.MonitorRect));
    }
}
